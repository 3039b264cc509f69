// The docket object over the practice database's Dockets table.
#include "host/practice_docket.hpp"

#include <cstdio>

#include "base/date_utilities.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"

namespace lf {
namespace {

std::string money(double value) {
  char buf[48];
  std::snprintf(buf, sizeof buf, "%.2f", value);
  return buf;
}

std::string hoursText(double value) {
  char buf[48];
  std::snprintf(buf, sizeof buf, "%.6g", value);
  return buf;
}

}  // namespace

void PracticeDocket::newDocket() {
  docketID_ = -1;
  values_.clear();
  hasStart_ = false;
  hours_ = 1.0;
  amount_ = up_ = down_ = 0;
  hasAmount_ = false;
}

bool PracticeDocket::loadDocket(long docketID) {
  newDocket();
  RecordsetScope rs(
      db_, "SELECT Dockets.* FROM Dockets WHERE DocketID=" + std::to_string(docketID) + ";",
      kLockReadOnly);
  if (!db_.hasRecord(rs)) return false;
  docketID_ = docketID;
  if (auto from = db_.getField(rs, "TimeFrom").toDate()) {
    start_ = *from;
    hasStart_ = true;
  }
  Variant hours = db_.getField(rs, "TotalTimeReal");
  if (!hours.isNull()) hours_ = hours.toDouble();
  return true;
}

void PracticeDocket::setDateTimeFrom(const Date& start) {
  start_ = start;
  hasStart_ = true;
}

void PracticeDocket::setDuration(double hours) {
  hours_ = hours;
}

void PracticeDocket::setBillingAmount(double amount, long billingType) {
  amount_ = amount;
  hasAmount_ = true;
  put("DocketBillingType", billingType);
}

void PracticeDocket::setAdjustmentUp(double amount) {
  up_ = amount;
}

void PracticeDocket::setAdjustmentDown(double amount) {
  down_ = amount;
}

void PracticeDocket::computeTimesAndAmounts() {
  if (hasStart_) {
    values_["DateFrom"] = start_.datePart().toIso();
    values_["TimeFrom"] = start_.toIso();
    values_["TimeTo"] = DateUtilities::addHours(start_, hours_).toIso();
  }
  const std::string hours = hoursText(hours_);
  values_["TotalTimeReal"] = hours;
  values_["TotalTimeRounded"] = hours;
  values_["TotalTimeFinal"] = hours;
  if (hasAmount_ || up_ != 0 || down_ != 0) {
    const double adjusted = amount_ + up_ - down_;
    values_["TotalAmountReal"] = money(amount_);
    values_["TotalAmountAdjusted"] = money(adjusted);
    values_["TotalAmountFinal"] = money(adjusted);
    values_["UseAdjustedAmount"] = (up_ != 0 || down_ != 0) ? "True" : "False";
  }
}

long PracticeDocket::saveDocket() {
  computeTimesAndAmounts();
  const bool shared = openDockets_ != 0 && db_.isRecordsetOpen(openDockets_);
  if (docketID_ > 0) {
    const std::string key = std::to_string(docketID_);
    if (shared && db_.findRecord(openDockets_, "DocketID", key)) {
      for (const auto& [column, value] : values_) db_.setField(openDockets_, column, value);
      return docketID_;
    }
    RecordsetScope rs(db_, "SELECT Dockets.* FROM Dockets WHERE DocketID=" + key + ";",
                      kLockOptimistic);
    if (db_.hasRecord(rs)) {
      for (const auto& [column, value] : values_) db_.setField(rs, column, value);
      return docketID_;
    }
  }
  auto add = [&](std::int32_t rs) {
    db_.addNewRecord(rs);
    for (const auto& [column, value] : values_) db_.setNewField(rs, column, value);
    db_.setNewField(rs, "DateCreated", Date::now().toIso());
    docketID_ = static_cast<long>(db_.getField(rs, "DocketID").toLong());
    db_.updateRecord(rs);
  };
  if (shared) {
    add(openDockets_);
  } else {
    RecordsetScope rs(db_, "SELECT Dockets.* FROM Dockets WHERE DocketID=-1;", kLockOptimistic);
    add(rs);
  }
  return docketID_;
}

}  // namespace lf
