// The shape of a procedure: trace calls, the three error actions, neutral results.
#include "base/procedure.hpp"

#include <gtest/gtest.h>

#include "base/failure.hpp"
#include "base/module_state.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

using testing::ModuleStateGuard;
using testing::RecordingErrorService;

long lookUp(bool fail) {
  long result = -1;
  procedure("nvImportlf6.dll-modTest-lookUp", [&] {
    if (fail) throw Failure("no such row");
    result = 42;
  });
  return result;
}

// Three records; the second fails. Counts the records finished.
int loopOverRecords(int& statementsAfterLoop) {
  int finished = 0;
  procedure("nvImportlf6.dll-modTest-loopOverRecords", [&] {
    for (int record = 1; record <= 3; ++record) {
      resumeNext([&] {
        if (record == 2) throw Failure("bad record");
        ++finished;
      });
    }
    ++statementsAfterLoop;
  });
  return finished;
}

class ProcedureTest : public ::testing::Test {
 protected:
  void install(RecordingErrorService& service) {
    moduleState().errorClass = &service;
    moduleState().errorClassIsSet = true;
  }
  ModuleStateGuard guard;
};

TEST_F(ProcedureTest, WithoutErrorServiceFailureLeavesSilentlyWithNeutralValue) {
  moduleState().errorClass = nullptr;
  moduleState().errorClassIsSet = false;
  EXPECT_EQ(lookUp(true), -1);
  EXPECT_EQ(lookUp(false), 42);
}

TEST_F(ProcedureTest, TraceIsPushedAndPoppedAroundEveryProcedure) {
  RecordingErrorService service;
  install(service);
  lookUp(false);
  lookUp(true);
  ASSERT_EQ(service.entered.size(), 2u);
  EXPECT_EQ(service.entered[0], "nvImportlf6.dll-modTest-lookUp");
  EXPECT_EQ(service.left, 2);
  EXPECT_TRUE(service.trace.empty());
  ASSERT_EQ(service.errors.size(), 1u);
  EXPECT_EQ(service.errors[0].description, "no such row");
  EXPECT_EQ(service.errors[0].source, "nvImportlf6.dll-modTest-lookUp");
}

TEST_F(ProcedureTest, ActionOneResumesWithTheNextRecord) {
  RecordingErrorService service(kErrorResumeNext);
  install(service);
  int after = 0;
  EXPECT_EQ(loopOverRecords(after), 2);
  EXPECT_EQ(after, 1);
  EXPECT_EQ(service.reported, 1);
}

TEST_F(ProcedureTest, ActionTwoLeavesTheProcedure) {
  RecordingErrorService service(kErrorLeaveProcedure);
  install(service);
  int after = 0;
  EXPECT_EQ(loopOverRecords(after), 1);
  EXPECT_EQ(after, 0);
  EXPECT_EQ(service.left, 1);
}

TEST_F(ProcedureTest, ActionThreeRaisesExitProgramAndLeaves) {
  RecordingErrorService service(kErrorExitProgram);
  install(service);
  int exits = 0;
  moduleState().raiseExitProgram = [&] { ++exits; };
  int after = 0;
  EXPECT_EQ(loopOverRecords(after), 1);
  EXPECT_EQ(exits, 1);
  EXPECT_EQ(after, 0);
}

TEST_F(ProcedureTest, InnerProcedureFailureDoesNotLeaveTheOuterOne) {
  RecordingErrorService service(kErrorLeaveProcedure);
  install(service);
  long inner = 0;
  bool outerFinished = false;
  procedure("nvImportlf6.dll-modTest-outer", [&] {
    inner = lookUp(true);
    outerFinished = true;
  });
  EXPECT_EQ(inner, -1);
  EXPECT_TRUE(outerFinished);
}

}  // namespace
}  // namespace lf
