// Test fixture of the client-record procedures: a fresh in-memory practice database made from
// the practice schema, set as DatabaseReference with a locale, a drop-down and an error
// service that records what it is told. The module state is restored afterwards.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "db/practice_schema.hpp"
#include "db/sqlite_database.hpp"
#include "frame/module_state.hpp"
#include "host/client_drop_down.hpp"
#include "host/error_service.hpp"
#include "host/locale_service.hpp"

namespace lf::testing {

class FakeLocale : public LocaleService {
 public:
  int countryMode = 1;
  long userID = 3;
  long personalYear = 2010;
  long taxYear = 2010;
  std::string getApplicationName() override { return "Ledgerfolio"; }
  int getCountryMode() override { return countryMode; }
  int getProvinceIndex() override { return kOntario; }
  long getCurrentUserID() override { return userID; }
  long getCurrentPersonalYear() override { return personalYear; }
  long getCurrentTaxYear() override { return taxYear; }
  std::string getDefaultFileFolder() override { return "/tmp"; }
};

class FakeDropDown : public ClientDropDownService {
 public:
  long sortOrderBusiness = 0;
  long sortOrderPersonal = 0;
  long getCurrentCategoryID() override { return 1; }
  long getCurrentContactCategoryID() override { return 1; }
  long getCategoryForYear(long&, const std::string&) override { return 1; }
  CategoryInfo getCategoryInfo(long) override { return {}; }
  long getFirmID() override { return 1; }
  void setLoadingPaused(bool&) override {}
  void setRefreshPaused(bool&) override {}
  long getSortOrderBusiness() override { return sortOrderBusiness; }
  long getSortOrderPersonal() override { return sortOrderPersonal; }
};

// Records the labels of the failures it is given and answers with a fixed action.
class RecordingErrors : public ErrorService {
 public:
  int action = kErrorLeaveProcedure;
  std::vector<ErrorInfo> errors;
  void enterProcedure(std::string_view) override {}
  void leaveProcedure() override {}
  void setError(const ErrorInfo& error) override { errors.push_back(error); }
  void reportError() override {}
  int getErrorAction() override { return action; }
};

class RecordFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    saved_ = moduleState();
    db.createNew(":memory:");
    for (const auto& statement : practiceSchemaStatements()) db.executeStatement(statement);
    ModuleState& state = moduleState();
    state.DatabaseReference = &db;
    state.LocaleReference = &locale;
    state.clientDropDownCtrlReference = &dropDown;
    state.errorClass = &errors;
    state.errorClassIsSet = true;
  }
  void TearDown() override { moduleState() = saved_; }

  void exec(const std::string& sql) { db.executeStatement(sql); }

  // The first row's value of a field, through the database service.
  Variant value(const std::string& sql, const std::string& field) {
    std::int32_t h = db.openRecordset(sql, kCursorKeyset, kLockReadOnly);
    Variant v = db.hasRecord(h) ? db.getField(h, field) : Variant::null();
    db.closeRecordset(h);
    return v;
  }

  // One field of every row, as text, in the statement's order.
  std::vector<std::string> column(const std::string& sql, const std::string& field) {
    std::vector<std::string> out;
    std::int32_t h = db.openRecordset(sql, kCursorKeyset, kLockReadOnly);
    if (db.hasRecord(h)) {
      while (!db.isEOF(h)) {
        out.push_back(db.getField(h, field).toString());
        db.moveNext(h);
      }
    }
    db.closeRecordset(h);
    return out;
  }

  SqliteDatabase db;
  FakeLocale locale;
  FakeDropDown dropDown;
  RecordingErrors errors;

 private:
  ModuleState saved_;
};

}  // namespace lf::testing
