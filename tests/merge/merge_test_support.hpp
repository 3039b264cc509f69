// Shared set-up of the merge engine tests: a locale of a chosen country and province, and a
// fresh in-memory practice database placed in the module state.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/practice_database.hpp"
#include "host/locale_service.hpp"
#include "host/practice_host_services.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace lf::testing_support {

class FakeLocale : public LocaleService {
 public:
  int country = kCountryCanada;
  int province = kOntario;
  std::string getApplicationName() override { return "Ledgerfolio"; }
  int getCountryMode() override { return country; }
  int getProvinceIndex() override { return province; }
  long getCurrentUserID() override { return 1; }
  long getCurrentPersonalYear() override { return 2012; }
  long getCurrentTaxYear() override { return 2012; }
  std::string getDefaultFileFolder() override { return "/tmp"; }
};

// Installs the locale (and, with a database, the practice database and its drop-down
// service) for one test and
// restores the module state afterwards.
class MergeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    saved_ = moduleState();
    moduleState().LocaleReference = &locale;
    moduleState().DatabaseReference = nullptr;
    moduleState().errorClass = nullptr;
    moduleState().errorClassIsSet = false;
    moduleState().clientDropDownCtrlReference = nullptr;
  }
  void TearDown() override { moduleState() = saved_; }

  // A fresh practice database, in use from now on.
  Database& usePracticeDatabase() {
    db_ = std::make_unique<Database>();
    db_->createNew(":memory:");
    createPracticeTables(*db_);
    dropDown_ = std::make_unique<PracticeClientDropDown>(*db_);
    moduleState().DatabaseReference = db_.get();
    moduleState().clientDropDownCtrlReference = dropDown_.get();
    return *db_;
  }
  void exec(const std::string& sql) { db_->executeStatement(sql); }

  // Display names of the list, in order.
  static std::vector<std::string> names(const clsInsertFieldsInRTB& rtb) {
    std::vector<std::string> out;
    for (const FieldItem& item : rtb.FieldList()) out.push_back(item.displayName);
    return out;
  }
  static bool hasName(const clsInsertFieldsInRTB& rtb, const std::string& name) {
    return rtb.FieldList().findByDisplayName(name) != nullptr;
  }
  static void build(clsInsertFieldsInRTB& rtb) {
    bool noListBox = false;
    bool clear = true;
    rtb.createDefaultFieldListStructure(noListBox, clear);
  }

  FakeLocale locale;

 private:
  ModuleState saved_;
  std::unique_ptr<Database> db_;
  std::unique_ptr<PracticeClientDropDown> dropDown_;
};

}  // namespace lf::testing_support
