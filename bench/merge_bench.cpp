// Merge speed: a letter of about 25 fields (company, default contact, accounting and firm
// fields, two dates) merged for each client of a generated practice of 10,000 companies with
// their default contacts, and the time to build the field catalogue.
//
// The large-template runs check and merge RTF templates of 3 MB and 50 MB: the letter with an
// embedded picture (a few fields in a sea of hex digits) and the letter repeated until the
// size is reached (many fields). Both must take time in proportion to the size.
//
// The letter run is the many-records use of the engine: the catalogue is built once, the
// recordsets hold whole tables and each merge seeks its client's rows. The single-document
// run opens the recordsets of one client and builds the catalogue for every letter.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/practice_database.hpp"
#include "host/practice_host_services.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace {

constexpr int kCompanies = 10000;
constexpr std::int32_t kFirstCompany = 1000;
constexpr std::int32_t kFirstContact = 50000;

const char* const kLetter =
    "«Your Company Name»\r\n«Your Address»\r\n«Your City», «Your Province»  «Your Postal Code»\r\n"
    "Tel. «Your Office Number»\r\n\r\n«(Todays Date, mmmm d, yyyy)»\r\n\r\n"
    "«Contact Display Name»\r\n«Contact Job Title»\r\n«Company Name»\r\n«Address»\r\n"
    "«City», «Abbreviated Province»  «Postal Code»\r\n\r\n"
    "Dear «Contact First Name» «Contact Last Name»,\r\n\r\n"
    "Re: «Corporate Name», business number «Business Number»\r\n\r\n"
    "Your year end of «(Year End Date, mmmm d, yyyy)» is coming. We will prepare your "
    "financial statements («Financial Statements») and file your sales tax return "
    "(«HST Filing Method»). Payroll account «Payroll Number» is included. Please send the "
    "records to «Contact Business Email» or fax them to «Fax Number».\r\n\r\n"
    "Yours truly,\r\n\r\n«Your Company Name»\r\n«Your Email»\r\n";

struct Practice {
  lf::Database db;
  std::unique_ptr<lf::PracticeLocale> locale;
  std::unique_ptr<lf::PracticeClientDropDown> dropDown;
};

void insert(lf::Database& db, std::int32_t h,
            std::initializer_list<std::pair<const char*, std::string>> fields) {
  db.addNewRecord(h);
  for (const auto& [name, value] : fields) db.setNewField(h, name, value);
  db.updateRecord(h);
}

Practice& practice() {
  static Practice* p = [] {
    auto* pr = new Practice();
    lf::Database& db = pr->db;
    db.createNew(":memory:");
    lf::createPracticeTables(db);
    lf::PracticeSeed seed;
    seed.currentYear = 2025;
    lf::seedPracticeDatabase(db, seed);
    auto open = [&](const char* table) {
      return db.openRecordset(std::string("SELECT ") + table + ".* FROM " + table + ";",
                              lf::kCursorKeyset, lf::kLockOptimistic);
    };
    std::int32_t companies = open("Companies"), notes = open("CompaniesNotes"),
                 clients = open("Clients"), data = open("ClientData"), contacts = open("Contacts"),
                 links = open("ContactLinks");
    std::int32_t satellites[] = {open("AccountingServices"), open("ClientOptions"),
                                 open("CorpTaxInfo"),        open("LawInfo"),
                                 open("OtherInfo"),          open("WSIB_EHTInfo")};
    const char* satelliteKeys[] = {"AccountingServiceID", "ClientOptionID", "CorpTaxInfoID",
                                   "LawInfoID",           "OtherInfoID",    "WSIB_EHTInfoID"};
    db.beginWriteGroup();
    for (int i = 0; i < kCompanies; ++i) {
      const std::string company = std::to_string(kFirstCompany + i);
      const std::string contact = std::to_string(kFirstContact + i);
      const std::string n = std::to_string(i);
      insert(db, companies,
             {{"CompanyID", company},
              {"CompanyName", "Client " + n + " Ltd"},
              {"CorporateName", "Client " + n + " Holdings Inc."},
              {"Address", n + " King Street West"},
              {"City", "Toronto"},
              {"Province", "Ontario"},
              {"PostalCode", "M5V 2T6"},
              {"FaxNumber", "(416) 555-0104"}});
      insert(db, notes, {{"CompanyNum", company}, {"Notes", "Client since 2001"}});
      insert(db, clients, {{"CompanyIDNum", company}, {"ContactIDNum", "-1"}});
      insert(db, data,
             {{"ClientDataID", company},
              {"CompanyIDNum", company},
              {"ActiveStatus", "1"},
              {"ShowThisClient", "True"},
              {"BusinessNumber", "12345 6789 RC0001"},
              {"GSTNumber", "12345 6789 RT0001"},
              {"PayrollNumber", "12345 6789 RP0001"},
              {"GSTFilingMethod", "3"},
              {"FinancialStatements", "3"},
              {"YearEndDate", "2025-03-31 00:00:00"}});
      for (int s = 0; s < 6; ++s) insert(db, satellites[s], {{satelliteKeys[s], company}});
      insert(db, contacts,
             {{"ContactID", contact},
              {"DisplayName", "Pat Owner" + n},
              {"FirstName", "Pat"},
              {"LastName", "Owner" + n},
              {"BusinessJobTitle", "President"},
              {"BusinessEmail", "pat" + n + "@client.example"}});
      insert(db, links,
             {{"ContactIDNum", contact}, {"CompanyNum", company}, {"DefaultContact", "True"}});
    }
    db.endWriteGroup();
    db.executeStatement(
        "UPDATE AccountantFirmInfo SET Address = '200 Bay Street, Suite 1500', City = 'Toronto', "
        "Province = 'Ontario', PostalCode = 'M5J 2J5', OfficeNumber = '(416) 555-0900', "
        "Email = 'office@mapleridge.example' WHERE CompanyID = 1;");
    pr->locale = std::make_unique<lf::PracticeLocale>(db);
    pr->dropDown = std::make_unique<lf::PracticeClientDropDown>(db);
    lf::ModuleState& state = lf::moduleState();
    state.DatabaseReference = &db;
    state.LocaleReference = pr->locale.get();
    state.clientDropDownCtrlReference = pr->dropDown.get();
    return pr;
  }();
  return *p;
}

void BM_MergeLetterForEachClient(benchmark::State& state) {
  practice();
  lf::clsInsertFieldsInRTB rtb;
  rtb.setMergeFieldListUse(lf::kUseManyRecords);
  rtb.ListType = 1;
  rtb.firmID = 1;
  bool noListBox = true, clearListBox = true;
  rtb.createDefaultFieldListStructure(noListBox, clearListBox);
  rtb.TemplateText = kLetter;
  int i = 0;
  size_t bytes = 0;
  for (auto _ : state) {
    rtb.companyID = kFirstCompany + i;
    rtb.contactID = kFirstContact + i;
    std::string letter = rtb.parseRTBComment();
    bytes += letter.size();
    benchmark::DoNotOptimize(letter);
    if (++i == kCompanies) i = 0;
  }
  state.counters["merges_per_second"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.counters["letter_bytes"] = static_cast<double>(bytes) / state.iterations();
  rtb.Terminate();
}
BENCHMARK(BM_MergeLetterForEachClient)->MinTime(2.0);

void BM_MergeLetterSingleDocument(benchmark::State& state) {
  practice();
  lf::clsInsertFieldsInRTB rtb;
  rtb.TemplateText = kLetter;
  int i = 0;
  for (auto _ : state) {
    rtb.ListType = 1;
    rtb.firmID = 1;
    rtb.companyID = kFirstCompany + i;
    rtb.contactID = kFirstContact + i;
    rtb.initializeDataRecordsetsForSingleDocMerge();
    benchmark::DoNotOptimize(rtb.parseRTBComment());
    if (++i == kCompanies) i = 0;
  }
  state.counters["merges_per_second"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  rtb.Terminate();
}
BENCHMARK(BM_MergeLetterSingleDocument);

void BM_BuildCatalogue(benchmark::State& state) {
  practice();
  lf::clsInsertFieldsInRTB rtb;
  rtb.ListType = static_cast<std::int32_t>(state.range(0));
  for (auto _ : state) {
    bool noListBox = true, clearListBox = true;
    rtb.createDefaultFieldListStructure(noListBox, clearListBox);
    benchmark::DoNotOptimize(rtb.FieldList().count());
  }
  state.counters["fields"] = rtb.FieldList().count();
}
BENCHMARK(BM_BuildCatalogue)->Arg(1)->Arg(8)->Unit(benchmark::kMicrosecond);

// The letter as RTF source: escaped guillemets, one paragraph per line.
std::string rtfLetter() {
  std::string out;
  for (const char* p = kLetter; *p != '\0'; ++p) {
    if (p[0] == '\xC2' && p[1] == '\xAB') {
      out += "\\'ab";
      ++p;
    } else if (p[0] == '\xC2' && p[1] == '\xBB') {
      out += "\\'bb";
      ++p;
    } else if (p[0] == '\r' && p[1] == '\n') {
      out += "\\par\r\n";
      ++p;
    } else {
      out += *p;
    }
  }
  return out;
}

// An RTF template of about `bytes` bytes. With a picture, the letter holds one PNG-like picture
// in lower-case hex lines as a word processor writes it; without, the letter is repeated.
std::string largeTemplate(size_t bytes, bool picture) {
  const std::string letter = rtfLetter();
  std::string out = "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Arial;}}\\pard\\f0\\fs20 ";
  if (picture) {
    out += letter;
    out += "{\\pict\\pngblip\\picw1600\\pich1200\\picwgoal9600\\pichgoal7200\r\n";
    std::uint32_t state = 12345;
    static const char kHex[] = "0123456789abcdef";
    while (out.size() + 140 < bytes) {
      for (int k = 0; k < 64; ++k) {
        state = state * 1103515245u + 12345u;
        out += kHex[(state >> 16) & 15];
        out += kHex[(state >> 24) & 15];
      }
      out += "\r\n";
    }
    out += "}\\par\r\n";
  } else {
    while (out.size() + letter.size() < bytes) out += letter;
  }
  out += "}";
  return out;
}

constexpr size_t kMegabyte = 1 << 20;

void BM_CheckLargeTemplate(benchmark::State& state) {
  practice();
  const std::string text =
      largeTemplate(static_cast<size_t>(state.range(0)) * kMegabyte, state.range(1) != 0);
  lf::clsInsertFieldsInRTB rtb;
  rtb.ListType = 1;
  bool noListBox = true, clearListBox = true;
  rtb.createDefaultFieldListStructure(noListBox, clearListBox);
  bool fault = true;
  for (auto _ : state) fault = rtb.testRTBComment(text, true, false, false);
  if (fault) state.SkipWithError("the template did not pass the check");
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
  rtb.Terminate();
}
BENCHMARK(BM_CheckLargeTemplate)
    ->ArgNames({"MB", "picture"})
    ->ArgsProduct({{3, 50}, {1, 0}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

void BM_MergeLargeTemplate(benchmark::State& state) {
  practice();
  lf::clsInsertFieldsInRTB rtb;
  rtb.TemplateText =
      largeTemplate(static_cast<size_t>(state.range(0)) * kMegabyte, state.range(1) != 0);
  rtb.ListType = 1;
  rtb.firmID = 1;
  rtb.companyID = kFirstCompany;
  rtb.contactID = kFirstContact;
  rtb.initializeDataRecordsetsForSingleDocMerge();
  size_t bytes = 0;
  for (auto _ : state) {
    std::string merged = rtb.parseRTBComment();
    bytes = merged.size();
    benchmark::DoNotOptimize(merged);
  }
  if (bytes == 0) state.SkipWithError("nothing merged");
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * rtb.TemplateText.size()));
  rtb.Terminate();
}
BENCHMARK(BM_MergeLargeTemplate)
    ->ArgNames({"MB", "picture"})
    ->ArgsProduct({{3, 50}, {1, 0}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
