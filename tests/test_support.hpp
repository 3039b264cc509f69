// Shared test fixtures: recording host services and a fresh in-memory practice database
// installed as the module-level DatabaseReference.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/error_service.hpp"
#include "base/module_state.hpp"
#include "db/database_factory.hpp"
#include "db/practice_database.hpp"
#include "host/client_drop_down.hpp"
#include "host/message_box.hpp"
#include "host/practice_host_services.hpp"

namespace lf::testing {

// Error service that records every call and answers a fixed action.
class RecordingErrorService : public ErrorService {
 public:
  explicit RecordingErrorService(int action = kErrorResumeNext) : action(action) {}
  void enterProcedure(std::string_view label) override {
    trace.emplace_back(label);
    entered.emplace_back(label);
  }
  void leaveProcedure() override {
    if (!trace.empty()) trace.pop_back();
    ++left;
  }
  void setError(const ErrorInfo& error) override { errors.push_back(error); }
  void reportError() override { ++reported; }
  int getErrorAction() override { return action; }

  int action;
  std::vector<std::string> trace;
  std::vector<std::string> entered;
  std::vector<ErrorInfo> errors;
  int left = 0;
  int reported = 0;
};

// A recording error service that installs itself as the module's errorClass for its lifetime.
class InstalledErrorService : public RecordingErrorService {
 public:
  explicit InstalledErrorService(int action = kErrorResumeNext) : RecordingErrorService(action) {
    ModuleState& state = moduleState();
    savedService_ = state.errorClass;
    savedIsSet_ = state.errorClassIsSet;
    state.errorClass = this;
    state.errorClassIsSet = true;
  }
  ~InstalledErrorService() override {
    ModuleState& state = moduleState();
    state.errorClass = savedService_;
    state.errorClassIsSet = savedIsSet_;
  }
  InstalledErrorService(const InstalledErrorService&) = delete;
  InstalledErrorService& operator=(const InstalledErrorService&) = delete;

 private:
  ErrorService* savedService_ = nullptr;
  bool savedIsSet_ = false;
};

// Message box that records messages and questions and answers from a queue (default yes).
class RecordingMessageBox : public MessageBox {
 public:
  void show(std::string_view text, int kind) override {
    shown.push_back({std::string(text), kind});
  }
  int ask(std::string_view text, int kind) override {
    asked.push_back({std::string(text), kind});
    if (answers.empty()) return defaultAnswer;
    int a = answers.front();
    answers.erase(answers.begin());
    return a;
  }
  struct Entry {
    std::string text;
    int kind;
  };
  std::vector<Entry> shown;
  std::vector<Entry> asked;
  std::vector<int> answers;
  int defaultAnswer = kAnswerYes;
};

// Saves and restores the module-level state around a test.
class ModuleStateGuard {
 public:
  ModuleStateGuard() : saved_(moduleState()) {}
  ~ModuleStateGuard() { moduleState() = saved_; }

 private:
  ModuleState saved_;
};

// A fresh seeded practice database (year 2025, Canada, Ontario) in memory, with recording
// error service and message box and the practice-backed locale and drop-down installed.
class PracticeDatabaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db = createDatabase(":memory:");
    createPracticeTables(*db);
    PracticeSeed seed;
    seed.currentYear = 2025;
    seedPracticeDatabase(*db, seed);
    locale = std::make_unique<PracticeLocale>(*db);
    dropDown = std::make_unique<PracticeClientDropDown>(*db);
    ModuleState& state = moduleState();
    state.DatabaseReference = db.get();
    state.errorClass = &errors;
    state.errorClassIsSet = true;
    state.MsgboxClass = &messages;
    state.msgboxClassIsSet = true;
    state.LocaleReference = locale.get();
    state.clientDropDownCtrlReference = dropDown.get();
  }

  // Runs a statement and answers the first row's field, or a null variant.
  Variant value(const std::string& sql, const std::string& field) {
    std::int32_t h = db->openRecordset(sql, kCursorKeyset, kLockReadOnly);
    Variant v = db->hasRecord(h) ? db->getField(h, field) : Variant::null();
    db->closeRecordset(h);
    return v;
  }
  long count(const std::string& sql) {
    std::int32_t h = db->openRecordset(sql, kCursorKeyset, kLockReadOnly);
    long n = db->recordCount(h);
    db->closeRecordset(h);
    return n;
  }

  ModuleStateGuard stateGuard;
  std::unique_ptr<Database> db;
  std::unique_ptr<PracticeLocale> locale;
  std::unique_ptr<PracticeClientDropDown> dropDown;
  RecordingErrorService errors;
  RecordingMessageBox messages;
};

}  // namespace lf::testing
