// The shape of a procedure: enterProcedure on the way in, leaveProcedure on the way out, and
// the handler that hands a failure to the error service and obeys its action.
//
//   long clsX::getSomething() {
//     long result = -1;
//     procedure("Ledgerfolio.exe-clsX-getSomething", [&] {
//       ...                                   // a failure here leaves; result stays -1
//       forEachRecord: resumeNext([&] { ... });  // action 1 goes on with the next record
//     });
//     return result;
//   }
//
// Action 1 resumes after the innermost resumeNext block (the next statement or record);
// a failure outside any such block leaves the procedure. Action 2 leaves the procedure,
// action 3 raises ExitProgram and leaves. Without an error service the procedure leaves
// silently, and a failed function keeps its neutral value.
#pragma once

#include <exception>
#include <string_view>

namespace lf {

class ProcedureGuard {
 public:
  explicit ProcedureGuard(std::string_view label);
  ~ProcedureGuard();
  ProcedureGuard(const ProcedureGuard&) = delete;
  ProcedureGuard& operator=(const ProcedureGuard&) = delete;

  std::string_view label() const { return label_; }

  // Reports the failure and answers true when the caller may resume (action 1).
  // Otherwise throws the unwinding signal that ends this procedure.
  bool handle(std::exception_ptr failure);

  // Thrown to unwind to a procedure's guard after action 2 or 3.
  struct Leave {
    const ProcedureGuard* owner;
  };

  static ProcedureGuard* current();

 private:
  std::string_view label_;
  bool traced_ = false;
  ProcedureGuard* outer_ = nullptr;
};

// Runs a procedure body under its label.
template <class Body>
void procedure(std::string_view label, Body&& body) {
  ProcedureGuard guard(label);
  try {
    body();
  } catch (const ProcedureGuard::Leave& leave) {
    if (leave.owner != &guard) throw;
  } catch (...) {
    try {
      guard.handle(std::current_exception());  // no statement to resume after: leave
    } catch (const ProcedureGuard::Leave& leave) {
      if (leave.owner != &guard) throw;
    }
  }
}

// A statement (or one record of a loop) that action 1 resumes after.
template <class Statement>
void resumeNext(Statement&& statement) {
  try {
    statement();
  } catch (const ProcedureGuard::Leave&) {
    throw;
  } catch (...) {
    ProcedureGuard* guard = ProcedureGuard::current();
    if (guard == nullptr) throw;
    guard->handle(std::current_exception());
  }
}

// Clean-up and accessors: errors continue with the next statement and are never reported.
template <class Statement>
void ignoreErrors(Statement&& statement) {
  try {
    statement();
  } catch (const ProcedureGuard::Leave&) {
    throw;
  } catch (...) {
  }
}

}  // namespace lf
