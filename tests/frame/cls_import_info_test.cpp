// The public boundary: start state, service injection and the entry operations.
#include "frame/cls_import_info.hpp"

#include <gtest/gtest.h>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

using testing::ModuleStateGuard;
using testing::RecordingErrorService;

TEST(ClsImportInfo, StartStateIsAllFalse) {
  ModuleStateGuard guard;
  moduleState().errorClassIsSet = false;
  clsImportInfo info;
  EXPECT_FALSE(info.importIntoAddressBook());
  EXPECT_FALSE(info.exitProgramFlag());
  EXPECT_FALSE(info.refreshData());
  EXPECT_FALSE(info.failedToInitializeFlag());
  EXPECT_NE(moduleState().generalUtilities, nullptr);
  EXPECT_NE(moduleState().dateUtilities, nullptr);
  EXPECT_NE(moduleState().fileUtilities, nullptr);
}

TEST(ClsImportInfo, NullDatabaseReferenceSetsAndRealOneClearsFailedFlag) {
  ModuleStateGuard guard;
  clsImportInfo info;
  info.setDatabaseReference(nullptr);
  EXPECT_TRUE(info.failedToInitializeFlag());
  Database db;
  info.setDatabaseReference(&db);
  EXPECT_FALSE(info.failedToInitializeFlag());
  EXPECT_EQ(moduleState().DatabaseReference, &db);
}

TEST(ClsImportInfo, TaxCycleEntryPointDoesNothingWithOrWithoutErrorClass) {
  ModuleStateGuard guard;
  moduleState().errorClass = nullptr;
  moduleState().errorClassIsSet = false;
  clsImportInfo info;
  info.openTaxCycleT1ImportForm();
  RecordingErrorService errors;
  info.setErrorClass(&errors);
  info.openTaxCycleT1ImportForm();
  EXPECT_EQ(errors.entered,
            std::vector<std::string>{"nvImportlf6.dll-clsImportInfo-openTaxCycleT1ImportForm"});
  EXPECT_EQ(errors.left, 1);
  EXPECT_EQ(errors.reported, 0);
  EXPECT_TRUE(info.openForm().empty());
}

TEST(ClsImportInfo, EntryOperationBeforeErrorClassSkipsTraceAndOpensItsForm) {
  ModuleStateGuard guard;
  moduleState().errorClass = nullptr;
  moduleState().errorClassIsSet = false;
  std::string seen;
  registerImportForm("frmImportProfileT1", [&](clsImportInfo& owner) { seen = owner.openForm(); });
  clsImportInfo info;
  info.openProfileT1ImportForm();
  EXPECT_EQ(seen, "frmImportProfileT1");
  EXPECT_TRUE(info.openForm().empty());  // the module reference is dropped after the call
  registerImportForm("frmImportProfileT1", nullptr);
}

TEST(ClsImportInfo, WizardChangeOfAddressBookChoiceReachesTheHost) {
  ModuleStateGuard guard;
  registerImportForm("frmImportPersonalClients",
                     [](clsImportInfo& owner) { owner.setImportIntoAddressBook(true); });
  clsImportInfo info;
  info.openPersonalClientsImportForm();
  EXPECT_TRUE(info.importIntoAddressBook());
  registerImportForm("frmImportPersonalClients", nullptr);
}

TEST(ClsImportInfo, ActionThreeInAnEntryOperationRaisesExitProgram) {
  ModuleStateGuard guard;
  RecordingErrorService errors(kErrorExitProgram);
  registerImportForm("frmImportCSV",
                     [](clsImportInfo&) { throw std::runtime_error("wizard failed"); });
  clsImportInfo info;
  info.setErrorClass(&errors);
  int raised = 0;
  info.ExitProgram = [&] { ++raised; };
  info.openBusinessClientsImportForm();
  EXPECT_EQ(raised, 1);
  EXPECT_TRUE(info.exitProgramFlag());
  registerImportForm("frmImportCSV", nullptr);
}

}  // namespace
}  // namespace lf
