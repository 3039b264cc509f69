// The cross-reference tables of the sync engines: which Ledgerfolio record each source row
// became, per source firm, so that a re-run of a sync finds what an earlier run imported.
//
// Each source has five tables (<Source>UserEntries, <Source>Clients, <Source>InvoiceEntries,
// <Source>TimeEntries, <Source>WorkCodeEntries); one table carries several kinds of pair, told
// apart by which columns are filled. The get and save operations are written once here and
// take the source's table and column words from a CrossReferenceWords; the engine of each
// source holds one CrossReferenceTables for its run, opened on the rows of its firm only.
//
// A get answers the Ledgerfolio ID of a source ID (-1 when unknown, or when the stored result
// is blank). A save searches by the Ledgerfolio ID, not by the source ID: saving a known
// Ledgerfolio ID re-points it to the new source ID (the last source row wins), and a contact
// that is both a personal client and a contact of a business client keeps one TPSClients row
// carrying both source IDs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lf {

class DatabaseService;

// The table and column names of one source's cross-reference tables, and the engine class
// word of its error labels.
struct CrossReferenceWords {
  std::string sourceWord;   // "TPS", "CCHPractice", "Balaboss"; replaces TPS in the labels
  std::string engineClass;  // "clsImportTPSInformation", ...
  std::string firmColumn;   // TPSDBID

  std::string userEntriesTable;      // TPSUserEntries
  std::string clientsTable;          // TPSClients
  std::string invoiceEntriesTable;   // TPSInvoiceEntries
  std::string timeEntriesTable;      // TPSTimeEntries
  std::string workCodeEntriesTable;  // TPSWorkCodeEntries

  std::string userIDColumn;             // TPSUserID
  std::string clientIDColumn;           // TPSClientID
  std::string contactIDColumn;          // TPSContactID
  std::string invoiceIDColumn;          // TPSInvoiceID
  std::string cashIDColumn;             // TPSCashID
  std::string timeIDColumn;             // TPSTimeID
  std::string workcodeIDColumn;         // TPSWorkcodeID
  std::string paragraphIDColumn;        // TPSParagraphID
  std::string billingCategoryIDColumn;  // TPSBillingCategoryID

  // The names of a source whose tables and columns all start with `sourceWord`.
  static CrossReferenceWords forSource(std::string_view sourceWord, std::string_view engineClass);
};

// The words of each source, made once.
enum class SyncSource { TPS, CCHPractice, Balaboss, Bill4Time };
const CrossReferenceWords& crossReferenceWords(SyncSource source);

// tpsCrossReferenceWords() and its like: the words of one source, as callable constants.
template <SyncSource source>
struct SourceCrossReferenceWords {
  const CrossReferenceWords& operator()() const { return crossReferenceWords(source); }
};
inline constexpr SourceCrossReferenceWords<SyncSource::TPS> tpsCrossReferenceWords{};
inline constexpr SourceCrossReferenceWords<SyncSource::CCHPractice>
    cchPracticeCrossReferenceWords{};
inline constexpr SourceCrossReferenceWords<SyncSource::Balaboss> balabossCrossReferenceWords{};
// Intended: Bill4Time keeps the Balaboss tables and columns (its rows are Balaboss rows to a
// Balaboss run); only the class word of its labels is its own.
inline constexpr SourceCrossReferenceWords<SyncSource::Bill4Time> bill4TimeCrossReferenceWords{};

// What a cross-reference row pairs: the table, the Ledgerfolio column and the source column.
enum class CrossReferenceKind {
  Employee,         // UserEntries: UserIDNum - UserID
  CompanyClient,    // Clients: CompanyID - ClientID
  ContactClient,    // Clients: ContactID - ClientID
  ContactContact,   // Clients: ContactID - ContactID
  InvoiceItem,      // WorkCodeEntries: InvoiceItemIDNum - ParagraphID
  BillingCategory,  // WorkCodeEntries: BillingCategoryIDNum - BillingCategoryID
  Workcode,         // WorkCodeEntries: WorkcodeIDNum - WorkcodeID
  Invoice,          // InvoiceEntries: InvoiceIDNum - InvoiceID
  Deposit,          // InvoiceEntries: DepositIDNum - CashID
  Docket,           // TimeEntries: DocketIDNum - TimeID
};

// The five cross-reference recordsets of one run, open on one firm's rows, and the get and
// save operations on them. Handles are 0 until open() and after close().
class CrossReferenceTables {
 public:
  explicit CrossReferenceTables(const CrossReferenceWords& words = tpsCrossReferenceWords());

  const CrossReferenceWords& words() const { return words_; }
  const std::string& firmID() const { return firmID_; }

  // "SELECT TPSUserEntries.* From TPSUserEntries WHERE TPSUserEntries.TPSDBID = '" + firm +
  // "';" for the table given. The firm ID goes in unescaped: an apostrophe in it makes the
  // statement fail, and the caller's handler takes over.
  std::string selectStatement(std::string_view table, std::string_view firmID) const;

  // Opens the five recordsets updatable, in the order users, clients, invoices, times, work
  // codes, on `db` (the practice database of the module state when null), and keeps the firm
  // ID for the saves. REQUIRES: the database is open. Throws on a failing statement.
  void open(std::string_view firmID, DatabaseService* db = nullptr);
  // Closes whichever of the five are open; errors are ignored.
  void close();

  std::int32_t userEntries = 0;
  std::int32_t clients = 0;
  std::int32_t invoiceEntries = 0;
  std::int32_t timeEntries = 0;
  std::int32_t workCodeEntries = 0;

  // --- The shared operations -------------------------------------------------------------
  // These raise a failing database call to their caller; the named operations below run
  // them under their own labels (the TPS name with the source's word in it).
  // Source ID to Ledgerfolio ID; -1 when unknown or blank. `pumps` event-pump calls first.
  long getLedgerfolioID(CrossReferenceKind kind, std::string_view sourceID, int pumps = 4);
  // Ledgerfolio ID to source ID as stored (text); empty when unknown or blank.
  std::string getSourceID(CrossReferenceKind kind, long ledgerfolioID, int pumps = 4);
  // Finds the row of the Ledgerfolio ID and writes the firm, the source ID and DateLastSync
  // (now); adds the row when there is none.
  void save(CrossReferenceKind kind, long ledgerfolioID, std::string_view sourceID);

  // The get and the save of a kind under the label of its named operation below (a failed
  // get keeps -1): what the engine's stages call.
  long find(CrossReferenceKind kind, std::string_view sourceID);
  void store(CrossReferenceKind kind, long ledgerfolioID, std::string_view sourceID);

  // --- The operations by their TPS names ---------------------------------------------------
  long getEmployeeIDFromTPSEmployeeID(std::string_view tpsUserID);
  long getInvoiceItemIDFromTPSParagraphID(std::string_view tpsParagraphID);
  long getBillingCategoryIDFromTPSServiceCategoryID(std::string_view tpsBillingCategoryID);
  long getWorkcodeIDFromTPSWorkcodeID(std::string_view tpsWorkcodeID);
  long getInvoiceIDFromTPSInvoiceID(std::string_view tpsInvoiceID);
  long getDepositIDFromTPSDepositID(std::string_view tpsCashID);
  long getDocketIDFromTPSTimeID(std::string_view tpsTimeID);
  // The plain look-ups behind the client gets; the duplicate search lives with the engine.
  long getCompanyIDFromTPSClientIDOnly(std::string_view tpsClientID);
  long getContactIDFromTPSClientIDOnly(std::string_view tpsClientID);
  long getContactIDFromTPSContactIDOnly(std::string_view tpsContactID);

  // Reverse look-ups; -1 when unknown or when the stored ID is not a number (the code
  // sources read getSourceID instead).
  long getTPSClientIDFromCompanyID(long companyID);
  long getTPSClientIDFromContactID(long contactID);

  void saveEmployeeIDAndTPSEmployeeID(long userID, std::string_view tpsUserID);
  void saveCompanyIDAndTPSClientID(long companyID, std::string_view tpsClientID);
  void saveContactIDAndTPSClientID(long contactID, std::string_view tpsClientID);
  void saveContactIDAndTPSContactID(long contactID, std::string_view tpsContactID);
  void saveInvoiceItemIDAndTPSParagraphID(long invoiceItemID, std::string_view tpsParagraphID);
  void saveBillingCategoryIDAndTPSServiceCategoryID(long billingCategoryID,
                                                    std::string_view tpsBillingCategoryID);
  void saveWorkcodeIDAndTPSWorkcodeID(long workcodeID, std::string_view tpsWorkcodeID);
  void saveInvoiceIDAndTPSInvoiceID(long invoiceID, std::string_view tpsInvoiceID);
  void saveDepositIDAndTPSDepositID(long depositID, std::string_view tpsCashID);
  void saveDocketIDAndTPSTimeID(long docketID, std::string_view tpsTimeID);

 private:
  CrossReferenceWords words_;
  std::string firmID_;
  DatabaseService* db_ = nullptr;
};

}  // namespace lf
