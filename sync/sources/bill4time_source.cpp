// The Bill4Time source: its description, its field maps, its stages as data and their
// creators, with the export's tables, columns and words.
//
// The stages run on the shared engine (SyncEngine::runStage); what is written here is what
// Bill4Time has of its own.
#include "sync/sources/bill4time_source.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/docket_object.hpp"
#include "records/lookups.hpp"
#include "sync/cls_import_bill4time_info.hpp"
#include "sync/source_rows.hpp"
#include "sync/sync_record_calls.hpp"
#include "sync/sync_values.hpp"

namespace lf {

const SourceDescription& bill4TimeSourceDescription() {
  static const SourceDescription description = [] {
    SourceDescription d;
    d.word = "Bill4Time";
    d.crossReferences = &bill4TimeCrossReferenceWords();
    d.clientKey = {{"Client Id"}};
    d.wizardForm = "frmBill4TimeWizard";
    d.fileDialogExtension = "add";
    // Intended: the file dialog keeps the Balaboss words.
    d.fileDialogTitle = "Open the Balaboss Database file";
    d.fileDialogFilter = "Balaboss Converted Database File (*.lfd)|*.add|All Files (*.*)|*.*";
    d.openFileRefusal =
        "You must open the Bill4Time Export file, usually names 'Export.mdb' in order to "
        "continue.";
    d.treeClass = "clsBill4TimeContactTree";
    d.treeRootText = "Bill4Time Contacts";
    d.treeClientsStatement =
        "SELECT Clients.[Client Id], Clients.[Client Name], Clients.[Client Status] "
        "From Clients WHERE Clients.[Client Status] Not Like 'Deleted';";
    d.treeNameColumn = "Client Name";
    return d;
  }();
  return description;
}

namespace {

namespace rec = syncrecords;
using G = GeneralUtilities;
using namespace sourcerows;

// The three address lines joined by blanks.
std::string addressLines(const FieldValues& v) {
  return joinPresent({v[0], v[1], v[2]});
}

// Whether a client ID stands among the clients the export lists (deleted ones are not); a
// blank ID is left to the client look-up, which reports it.
bool clientListed(DatabaseService& source, std::int32_t clients, const std::string& clientID) {
  return clientID.empty() || (clients != 0 && source.findRecord(clients, "Client Id", clientID));
}

// The invoice a time entry names in its Invoice Id; empty when it names none or the export's
// time entries have no such column.
std::string invoiceOfEntry(DatabaseService& source, std::int32_t entries) {
  std::string invoice;
  ignoreErrors([&] { invoice = SyncEngine::readText(source, entries, "Invoice Id"); });
  return invoice;
}

// --- Field maps -------------------------------------------------------------------------------

// A business client (Clients to Companies), besides its name, legal form and notes.
constexpr FieldMapping kCompanyFields[] = {
    {{"Client Id"}, "ClientID"},
    {{"Account Mgr"}, "AccountantName"},
    {{"Address Line 1", "Address Line 2", "Address Line 3"}, "Address", addressLines},
    {{"City"}, "City"},
    {{"State"}, "Province"},
    {{"Postal Code"}, "PostalCode"},
    {{"Country"}, "Country"},
    {{"Phone"}, "OfficeNumber"},
    {{"Fax"}, "FaxNumber"},
    {{"Email"}, "Email"},
};

// A personal client (Clients to Contacts).
constexpr FieldMapping kPersonalClientFields[] = {
    {{"Address Line 1", "Address Line 2", "Address Line 3"}, "HomeAddress", addressLines},
    {{"City"}, "HomeCity"},
    {{"State"}, "HomeProvince"},
    {{"Postal Code"}, "HomePostalCode"},
    {{"Country"}, "HomeCountry"},
    {{"Phone"}, "HomePhone_Main"},
    {{"Mobile Phone"}, "HomePhone_Cell"},
    {{"Fax"}, "HomePhone_Fax"},
    {{"Email"}, "PersonalEmail"},
};

// A contact of a business client (Contacts to Contacts).
constexpr FieldMapping kContactFields[] = {
    {{"First Name"}, "FirstName"},
    {{"MI"}, "MiddleName"},
    {{"Last Name"}, "LastName"},
    {{"Full Name"}, "DisplayName"},
    {{"Address Line 1", "Address Line 2", "Address Line 3"}, "HomeAddress", addressLines},
    {{"City"}, "HomeCity"},
    {{"State"}, "HomeProvince"},
    {{"PostalCode"}, "HomePostalCode"},
    {{"Country"}, "HomeCountry"},
    {{"Phone"}, "BusinessPhone_Main"},
    {{"Home Phone"}, "HomePhone_Main"},
    {{"Mobile"}, "HomePhone_Cell"},
    {{"Fax"}, "HomePhone_Fax"},
    {{"Department"}, "BusinessDepartment"},
    {{"Email"}, "BusinessEmail"},
    {{"Alt Email"}, "PersonalEmail"},
};

// An invoice's number and dates; its amounts are computed.
constexpr FieldMapping kInvoiceFields[] = {
    {{"Invoice Id"}, "InvoiceNum"},
    {{"Invoice Date"}, "InvoiceDate"},
    {{"Invoice Date"}, "InvoiceDueDate"},
};

constexpr FieldMap kFieldMaps[] = {
    {"Clients", "Companies", kCompanyFields},
    {"Clients", "Contacts", kPersonalClientFields},
    {"Contacts", "Contacts", kContactFields},
    {"Invoices", "Invoices", kInvoiceFields},
};

}  // namespace

std::span<const FieldMap> bill4TimeFieldMaps() {
  return kFieldMaps;
}

// --- The stages -------------------------------------------------------------------------------

void clsImportBill4TimeInfo::describeStages() {
  using K = CrossReferenceKind;
  using T = clsImportBill4TimeInfo;

  // The staff creator searches the recordset the stage scans, where one user ID may stand
  // under two names: the stage keeps its place around the creator.
  staff_ = scanStage("staff", "importBill4TimeUsers", &rsStaff, "User Id", K::Employee);
  staff_.onlyNewEntriesApply = staff_.stepsProgress = false;
  staff_.keepsPosition = true;
  staff_.create = [this](const std::string& id, long known) {
    return createNewBill4TimeEmployeeAsEmployeeInLedgerfolio(id, practiceFirmID(), known);
  };
  staff_.afterRows = [](long reachedCreator) {
    if (reachedCreator > 0) forceFirstUserToBeAnAdminUser();
  };

  businessClients_ =
      clientStage("business clients", "importBill4TimeBusinessClients", &options_.companyCollection,
                  K::CompanyClient, ClientRole::Company);
  businessClients_.create = creator(this, &T::createNewBill4TimeClientAsCompanyInLedgerfolio);
  businessClients_.afterSave = [this](const std::string& id, long company) {
    importBill4TimeClientContacts(id, company);
  };
  clientContacts_ = scanStage("business clients", "importBill4TimeBusinessClients", &rsContacts,
                              "Contact Id", K::ContactContact);
  clientContacts_.clientMatch = ClientRole::ContactOfContact;
  clientContacts_.create = [this](const std::string& id, long known) {
    return createNewBill4TimeContactAsContactInLedgerfolio(id, contactsCompany_, known);
  };

  personalClients_ =
      clientStage("personal clients", "importBill4TimePersonalClients",
                  &options_.contactsCollection, K::ContactClient, ClientRole::ContactOfClient);
  personalClients_.beforeRows = [this] {
    long year = currentPersonalYear();
    personalCategory_ = dropDown() != nullptr ? dropDown()->getCategoryForYear(year, "") : -1;
  };
  personalClients_.create = [this](const std::string& id, long known) {
    return createNewBill4TimeClientAsContactInLedgerfolio(id, known, -1, personalCategory_);
  };

  wipEntries_ =
      scanStage("time entries", "importBill4TimeWIPEntries", &rsWIPQuery, "Entry ID", K::Docket);
  wipEntries_.progressCaption = "Importing Bill4Time WIP Entry {} of {}";
  wipEntries_.create = creator(this, &T::createNewBill4TimeTimeAsDocketInLedgerfolio);

  // The invoice creator searches the recordset the stage scans.
  invoices_ =
      scanStage("invoices", "importBill4TimeInvoices", &rsInvoices, "Invoice Id", K::Invoice);
  invoices_.progressCaption = "Importing Bill4Time Invoice {} of {}";
  invoices_.keepsPosition = true;
  invoices_.create = creator(this, &T::createNewBill4TimeInvoiceAsInvoiceInLedgerfolio);

  clientCandidates = {{
      {"getCompanyIDFromBill4TimeClientID",
       K::CompanyClient,
       &rsClients,
       {"Client Id"},
       {.companyName = "Client Name", .clientCode = "Client Id"},
       6},
      {"getContactIDFromBill4TimeClientID",
       K::ContactClient,
       &rsClients,
       {"Client Id"},
       {.displayName = "Client Name", .clientCode = "Client Id"}},
      {"getContactIDFromBill4TimeContactID",
       K::ContactContact,
       &rsContacts,
       {"Contact Id"},
       {.firstName = "First Name", .lastName = "Last Name"}},
  }};
  clientCreators = {
      .company =
          [this](const std::string& id, long company) {
            return createNewBill4TimeClientAsCompanyInLedgerfolio(id, company);
          },
      .contact =
          [this](const std::string& id, long contact, long company, long category) {
            return createNewBill4TimeClientAsContactInLedgerfolio(id, contact, company, category);
          },
      .name =
          [this](const std::string& id) { return getBill4TimeClientNameFromBill4TimeClientID(id); },
  };
}

std::string clsImportBill4TimeInfo::getBill4TimeClientNameFromBill4TimeClientID(
    const std::string& clientID) {
  return lookUpSource(__func__, rsClients, "Client Id", clientID, "Client Name");
}

void clsImportBill4TimeInfo::importBill4TimeClientContacts(const std::string& clientID,
                                                           long companyID) {
  if (!validCompanyID(companyID) || !sourceUsable()) return;
  DatabaseService& source = *sourceDatabase();
  std::vector<std::string> contacts;
  if (rsContacts != 0 && source.findRecord(rsContacts, "Client Id", clientID)) {
    for (; !source.isEOF(rsContacts); source.findNext(rsContacts)) {
      const std::string id = readText(source, rsContacts, "Contact Id");
      if (!id.empty()) contacts.push_back(id);
    }
  }
  contactsCompany_ = companyID;
  for (const std::string& id : contacts)
    syncKey(clientContacts_, SourceRow{source, rsContacts, id});
  rec::saveCompanyRTF(companyID);
  rec::saveCompanyContactRTF(companyID, rec::getDefaultContactIDFromCompanyID(companyID));
}

// --- Staff ------------------------------------------------------------------------------------

long clsImportBill4TimeInfo::createNewBill4TimeEmployeeAsEmployeeInLedgerfolio(
    const std::string& userID, long firmID, long employeeID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    long employee = employeeID;
    // A member made earlier in this run is not in the run's staff recordset: employeeRow
    // finds it all the same.
    if (employeeID <= 0 || !employeeRow(db, rsAccountantEmployeeInfo, employeeID).found()) {
      const std::string name = readText(source, rsStaff, "User");
      if (name.empty()) return skipBecause("no name");
      employee = rec::addAccountantEmployee(name, firmID, 2);
    }
    // The user's rates, the most used first: each a rate row "Rate 1", "Rate 2", ..., the
    // first the default.
    std::vector<float> used;
    {
      RecordsetScope frequencies(
          source,
          "SELECT TimeEntries.[User Id], TimeEntries.Rate, Count(TimeEntries.[User Id]) AS "
          "[CountOfUser Id] "
          "From TimeEntries "
          "GROUP BY TimeEntries.[User Id], TimeEntries.Rate "
          "HAVING (((TimeEntries.[User Id])=" +
              userID +
              ") AND ((TimeEntries.Rate)>0)) "
              "ORDER BY Count(TimeEntries.[User Id]) DESC;",
          kLockReadOnly);
      scan(source, frequencies,
           [&] { used.push_back(parseSourceMoney(readText(source, frequencies, "Rate"))); });
    }
    RecordsetScope rates(db,
                         "SELECT UserBillingRates.* FROM UserBillingRates WHERE "
                         "UserBillingRates.UserIDNum=" +
                             idText(employee) + ";",
                         kLockOptimistic);
    for (size_t i = 0; i < used.size(); ++i)
      saveUserBillingRate(db, rates, employee, "Rate " + std::to_string(i + 1), used[i], i == 0);
    rec::saveEmployeeBusinessRTF(employee);
    rec::saveEmployeePersonalRTF(employee);
    return employee;
  };
  return createFromSourceRow(__func__, rsStaff, "User Id", userID, employeeID, create);
}

// --- Clients ----------------------------------------------------------------------------------

long clsImportBill4TimeInfo::createNewBill4TimeClientAsCompanyInLedgerfolio(
    const std::string& clientID, long companyID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsClients, f); };
    const std::string name = src("Client Name");
    if (name.empty()) return skipBecause("no name");

    const long company = companyID > 0 && companyRow(db, rsCompanies, companyID).found()
                             ? companyID
                             : getCompanyIDFromClientDataID(rec::addNewClientDataEntry());
    long category = options_.importCategory;
    if (!validCategoryID(category) && dropDown() != nullptr)
      category = dropDown()->getCurrentCategoryID();

    RowAccess row = companyRow(db, rsCompanies, company);
    if (row.found()) {
      db.setField(row, "CategoryNum", idText(category));
      db.setField(row, "CompanyName", name);
      if (G::upperCase(name).find(" LLP") != std::string::npos)
        db.setField(row, "CompanyType", "2");
      writeFields(source, rsClients, db, row, kCompanyFields);

      std::string note;
      if (!src("Mobile Phone").empty()) addNoteItem(note, "Mobile Number: " + src("Mobile Phone"));
      const bool needsRecord =
          dropDown() != nullptr && dropDown()->getCategoryInfo(category).needsRecord;
      if (needsRecord) {
        const long clientData = rec::addNewClientDataEntryForExistingCompany(company);
        if (validClientID(clientData)) {
          RowAccess data(db, rsMainBusinessList, "ClientDataID", clientData,
                         getMainBusinessSQLString(false, 3, clientData));
          if (data.found())
            db.setField(data, "ActiveStatus",
                        G::trim(src("Client Status")) == "ACTIVE" ? "1" : "2");
        }
      }
      writeCompanyNote(db, rsCompaniesNotes, company, note);
    }
    setProgressCaption("Synchronizing " + name);
    setRefreshData(true);
    return company;
  };
  return createFromSourceRow(__func__, rsClients, "Client Id", clientID, -1, create);
}

long clsImportBill4TimeInfo::createNewBill4TimeClientAsContactInLedgerfolio(
    const std::string& clientID, long contactID, long companyID, long categoryID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    const long category = personalClientCategory(categoryID, companyID);
    const std::string name = readText(source, rsClients, "Client Name");
    if (name.empty()) return skipBecause("no name");
    return storePersonalClientContact(
        db, rsTargetContacts, name, contactID, companyID, category, 1,
        [&](std::int32_t row) { writeFields(source, rsClients, db, row, kPersonalClientFields); });
  };
  return createFromSourceRow(__func__, rsClients, "Client Id", clientID, -1, create);
}

long clsImportBill4TimeInfo::createNewBill4TimeContactAsContactInLedgerfolio(
    const std::string& contactID, long companyID, long ledgerfolioContactID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    std::string name = readText(source, rsContacts, "Full Name");
    if (name.empty())
      name = joinPresent({readText(source, rsContacts, "First Name"),
                          readText(source, rsContacts, "MI"),
                          readText(source, rsContacts, "Last Name")});
    if (name.empty()) return skipBecause("no name");
    const long contact =
        ledgerfolioContactID > 0 && contactRow(db, rsTargetContacts, ledgerfolioContactID).found()
            ? ledgerfolioContactID
            : rec::addNewContact(name);
    rec::addContactLink(contact, -1, companyID);
    RowAccess row = contactRow(db, rsTargetContacts, contact);
    if (row.found()) writeFields(source, rsContacts, db, row, kContactFields);
    rec::saveContactBusinessRTF(contact);
    rec::saveContactPersonalRTF(contact);
    return contact;
  };
  return createFromSourceRow(__func__, rsContacts, "Contact Id", contactID, -1, create);
}

// --- Time entries, invoices and their deposits --------------------------------------------------

long clsImportBill4TimeInfo::createNewBill4TimeTimeAsDocketInLedgerfolio(const std::string& entryID,
                                                                         long docketID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsTimeEntries, f); };
    // A deleted client is not among the export's clients, and neither is its work.
    if (!clientListed(source, rsClients, src("Client Id"))) {
      skipBecause("client not in the export");
      return docketID;
    }
    long company = -1, contact = -1;
    if (!clientOfRecord(rsTimeEntries, "Entry ID", entryID, "Client Id", company, contact))
      return docketID;
    // A user the cross-reference does not know leaves the docket's neutral user.
    const std::string userKey = src("User Id");
    const long user =
        userKey.empty() ? -1 : crossReferences().find(CrossReferenceKind::Employee, userKey);

    std::unique_ptr<DocketObject> docket = makeDocketObject();
    if (!docket) return docketID;
    if (docketID <= 0 || !docket->loadDocket(docketID)) docket->newDocket();
    docket->setUserIDNum(user);
    docket->setFirmIDNum(practiceFirmID());
    docket->setCompanyIDNum(company);
    docket->setContactIDNum(contact);
    docket->setBillToCompanyIDNum(company);
    docket->setBillToContactIDNum(contact);
    // The day of the entry at its start time.
    if (auto day = DateUtilities::parseDateText(src("Entry Date"))) {
      Date start = day->datePart();
      if (auto time = DateUtilities::parseDateText(src("Start Time")))
        start.serial += time->timePart();
      docket->setDateTimeFrom(start);
    }
    double hours = 1.0;
    if (!G::isNumeric(src("Labor Hours")) || !G::parseNumber(src("Labor Hours"), hours))
      hours = 1.0;
    docket->setDuration(hours);
    docket->setInvoiced(false);
    docket->setDocketStatus(0);
    std::string subject = src("Activity");
    if (subject.empty()) subject = src("Public Description");
    docket->setSubject(subject.substr(0, 255));
    const std::string body = joinPresent({src("Public Description"), src("Internal Description")});
    if (!body.empty()) docket->setTextBody(body);
    docket->setShowOnInvoice(false);
    // Billable hours at the entry's rate; an entry that is not billable bills nothing.
    const bool billable = readBool(source, rsTimeEntries, "Billable");
    double billableHours = 0.0;
    if (!G::parseNumber(src("Billable Hours"), billableHours)) billableHours = 0.0;
    const double rate = parseSourceMoney(src("Rate"));
    docket->setBillingAmount(billable ? billableHours * rate : 0.0, 2);
    const long saved = docket->saveDocket();

    const long rateID = user > 0 && rate > 0 ? getBillingRate(user, rate) : -1;
    if (saved > 0 && rateID > 0) {
      RowAccess row(db, rsDockets, "DocketID", saved,
                    "SELECT Dockets.* FROM Dockets WHERE DocketID=" + idText(saved) + ";");
      if (row.found()) db.setField(row, "BillingRateIDNum", idText(rateID));
    }
    // An entry of an invoice brought across before: its docket joins the invoice's dockets.
    // Entries of invoices still to come are joined by the invoice stage.
    const std::string sourceInvoice = invoiceOfEntry(source, rsTimeEntries);
    if (saved > 0 && !sourceInvoice.empty()) {
      const long invoice = crossReferences().find(CrossReferenceKind::Invoice, sourceInvoice);
      if (validInvoiceID(idText(invoice)))
        createNewTPSTimeAsInvoiceDocketInLedgerfolio(saved, invoice);
    }
    return saved;
  };
  return createFromSourceRow(__func__, rsTimeEntries, "Entry ID", entryID, docketID, create);
}

long clsImportBill4TimeInfo::createNewBill4TimeInvoiceAsInvoiceInLedgerfolio(
    const std::string& invoiceKey, long invoiceID) {
  auto create = [&](DatabaseService& source, DatabaseService& db) -> long {
    auto src = [&](std::string_view f) { return readText(source, rsInvoices, f); };
    if (!clientListed(source, rsClients, src("Client Id")))
      return skipBecause("client not in the export");
    long company = -1, contact = -1;
    if (!clientOfRecord(rsInvoices, "Invoice Id", invoiceKey, "Client Id", company, contact))
      return -1;
    const long invoice = clientRowOf(db, rsTargetInvoices, "InvoiceID", invoiceID, practiceFirmID(),
                                     company, contact);
    if (invoice == -1) return -1;
    writeFields(source, rsInvoices, db, rsTargetInvoices, kInvoiceFields);
    // Labour and expenses are the subtotal; what the total holds beyond the subtotal less the
    // discount is tax; the discount is the final amount's adjustment.
    const float subtotal = parseSourceMoney(src("Invoice Labor Total")) +
                           parseSourceMoney(src("Invoice Expense Total"));
    const float discount = parseSourceMoney(src("Invoice Discount Amount"));
    const float total = parseSourceMoney(src("Invoice Total"));
    const float taxes = std::max(0.0f, total - (subtotal - discount));
    writeInvoiceAmounts(db, rsTargetInvoices, subtotal, taxes);
    db.setField(rsTargetInvoices, "InvoiceFinalAmountAdjustments", numberText(-discount));
    db.setField(rsTargetInvoices, "UseFinalAmountAdjustment", discount != 0.0f ? "True" : "False");
    db.setField(rsTargetInvoices, "InvoiceFinalAmountWithTaxes", numberText(total));

    linkBill4TimeInvoiceDockets(invoiceKey, invoice);

    // Without a payments table, a paid invoice is paid by a deposit of its total.
    if (G::trim(src("Paid Status")) == "PAID")
      createNewLedgerfolioDepositAsDeposit(invoiceKey, invoice, company, contact, total);
    return invoice;
  };
  return createFromSourceRow(__func__, rsInvoices, "Invoice Id", invoiceKey, -1, create);
}

void clsImportBill4TimeInfo::linkBill4TimeInvoiceDockets(const std::string& invoiceKey,
                                                         long invoiceID) {
  if (rsTimeEntries == 0 || !sourceUsable()) return;
  DatabaseService& source = *sourceDatabase();
  std::vector<std::string> entries;
  ignoreErrors([&] {
    if (!source.findRecord(rsTimeEntries, "Invoice Id", invoiceKey)) return;
    for (; !source.isEOF(rsTimeEntries); source.findNext(rsTimeEntries))
      entries.push_back(readText(source, rsTimeEntries, "Entry ID"));
  });
  for (const std::string& entry : entries) {
    const long docket = crossReferences().find(CrossReferenceKind::Docket, entry);
    if (docket > 0) createNewTPSTimeAsInvoiceDocketInLedgerfolio(docket, invoiceID);
  }
}

long clsImportBill4TimeInfo::createNewLedgerfolioDepositAsDeposit(const std::string& invoiceKey,
                                                                  long invoiceID, long companyID,
                                                                  long contactID, float amount) {
  long result = -1;
  procedure(label(__func__), [&] {
    if (!practiceOpen()) return;
    // Once per source invoice, however often the invoice is written.
    if (crossReferences().find(CrossReferenceKind::Deposit, invoiceKey) > 0) return;
    DatabaseService& db = practice();
    RecordsetScope deposits(db, "SELECT Deposits.* FROM Deposits WHERE DepositID=0;",
                            kLockOptimistic);
    db.addNewRecord(deposits);
    db.setNewField(deposits, "FirmIDNum", idText(practiceFirmID()));
    db.setNewField(deposits, "DateCreated", Date::now().toIso());
    db.setNewField(deposits, "CompanyIDNum", idText(companyID));
    db.setNewField(deposits, "ContactIDNum", idText(contactID));
    db.setNewField(deposits, "TotalAmount", numberText(amount));
    const long deposit = static_cast<long>(db.getField(deposits, "DepositID").toLong());
    db.updateRecord(deposits);

    RecordsetScope payments(db, "SELECT DepositPayments.* From DepositPayments WHERE 0=1;",
                            kLockOptimistic);
    db.addNewRecord(payments);
    db.setNewField(payments, "DepositIDNum", idText(deposit));
    db.setNewField(payments, "InvoiceIDNum", idText(invoiceID));
    db.setNewField(payments, "Amount", numberText(amount));
    db.updateRecord(payments);
    crossReferences().store(CrossReferenceKind::Deposit, deposit, invoiceKey);
    result = deposit;
  });
  return result;
}

}  // namespace lf
