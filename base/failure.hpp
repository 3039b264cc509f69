// Failures raised inside the component. Every operation throws one of these (or lets a
// std::exception through); the procedure guard turns it into the error service's dialogue.
#pragma once

#include <stdexcept>
#include <string>

namespace lf {

// A failure with the legacy error number, for the log and the report.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, long number = 5)
      : std::runtime_error(message), number_(number) {}
  long number() const { return number_; }

 private:
  long number_;
};

// The legacy "Subscript out of range" (9), which some parsers rely on reaching.
class SubscriptOutOfRange : public Failure {
 public:
  SubscriptOutOfRange() : Failure("Subscript out of range", 9) {}
};

// A database call that failed (bad statement, missing table or column, closed handle).
class DatabaseFailure : public Failure {
 public:
  explicit DatabaseFailure(const std::string& message) : Failure(message, 3001) {}
};

}  // namespace lf
