// addNewClientDataEntry and addNewClientDataEntryForExistingCompany: the rows of a business
// client, each tested before it is added.
#include "records/company_records.hpp"

#include <array>
#include <string>
#include <string_view>

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "records/record_support.hpp"

namespace lf {
namespace {

using records::dropDown;
using records::text;
using records::toLong;

// The eight one-to-one satellites of a ClientData row, in the order they are created.
// ClientUSInfo is made in Canada too, so that a change of country mode finds it.
struct Satellite {
  std::string_view table;
  std::string_view keyColumn;
};
constexpr std::array<Satellite, 8> kSatellites = {{
    {"AccountingServices", "AccountingServiceID"},
    {"ClientOptions", "ClientOptionID"},
    {"ClientNotes", "ClientNoteID"},
    {"CorpTaxInfo", "CorpTaxInfoID"},
    {"LawInfo", "LawInfoID"},
    {"OtherInfo", "OtherInfoID"},
    {"WSIB_EHTInfo", "WSIB_EHTInfoID"},
    {"ClientUSInfo", "ClientUSInfoID"},
}};

void addCompaniesNotesRow(DatabaseService& db, long companyID) {
  RecordsetScope rs(db,
                    "SELECT CompaniesNotes.CompanyNum FROM CompaniesNotes WHERE CompanyNum=" +
                        text(companyID) + ";",
                    kLockOptimistic);
  if (db.hasRecord(rs)) return;
  db.addNewRecord(rs);
  db.setNewField(rs, "CompanyNum", text(companyID));
  db.updateRecord(rs);
}

// The company's Clients entry, with ContactIDNum -1 also when the row was there.
void setCompanyClientsRow(DatabaseService& db, long companyID) {
  RecordsetScope rs(
      db, "SELECT Clients.* FROM Clients WHERE Clients.CompanyIDNum=" + text(companyID) + ";",
      kLockOptimistic);
  if (db.hasRecord(rs)) {
    db.setField(rs, "ContactIDNum", "-1");
    return;
  }
  db.addNewRecord(rs);
  db.setNewField(rs, "CompanyIDNum", text(companyID));
  db.setNewField(rs, "ContactIDNum", "-1");
  db.updateRecord(rs);
}

// The company's ClientData row, the existing one or a new one; answers its ClientDataID.
long clientDataRow(DatabaseService& db, long companyID) {
  RecordsetScope rs(
      db, "SELECT ClientData.* FROM ClientData WHERE CompanyIDNum=" + text(companyID) + ";",
      kLockOptimistic);
  if (db.hasRecord(rs)) return toLong(db.getField(rs, "ClientDataID"));
  db.addNewRecord(rs);
  db.setNewField(rs, "CompanyIDNum", text(companyID));
  db.updateRecord(rs);
  return toLong(db.getField(rs, "ClientDataID"));
}

// Each satellite on its own, so that error action 1 goes on with the next one.
void addSatelliteRows(DatabaseService& db, long clientDataID) {
  const std::string id = text(clientDataID);
  for (const Satellite& satellite : kSatellites) {
    resumeNext([&] {
      const std::string table(satellite.table);
      const std::string key(satellite.keyColumn);
      RecordsetScope rs(db,
                        "SELECT " + table + ".* FROM " + table + " WHERE " + key + "=" + id + ";",
                        kLockOptimistic);
      if (db.hasRecord(rs)) return;
      db.addNewRecord(rs);
      db.setNewField(rs, key, id);
      db.updateRecord(rs);
    });
  }
}

}  // namespace

long addNewClientDataEntry() {
  long result = -1;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-addNewClientDataEntry", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;

    long companyID = -1;
    {
      RecordsetScope rs(*db, "SELECT Companies.* FROM Companies;", kLockOptimistic);
      db->addNewRecord(rs);
      db->setNewField(rs, "CompanyName", "");
      db->setNewField(rs, "CategoryNum", text(dropDown().getCurrentCategoryID()));
      companyID = toLong(db->getField(rs, "CompanyID"));
      db->updateRecord(rs);
    }
    addCompaniesNotesRow(*db, companyID);
    setCompanyClientsRow(*db, companyID);
    result = clientDataRow(*db, companyID);
    addSatelliteRows(*db, result);
    dropDown().refreshClientList();
  });
  return result;
}

long addNewClientDataEntryForExistingCompany(long companyID) {
  long result = -1;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-addNewClientDataEntryForExistingCompany",
            [&] {
              DatabaseService* db = usablePracticeDatabase();
              if (db == nullptr) return;
              result = clientDataRow(*db, companyID);
              setCompanyClientsRow(*db, companyID);
              addSatelliteRows(*db, result);
              dropDown().refreshClientList();
            });
  return result;
}

}  // namespace lf
