// The docket object over the practice database's Dockets table. Given an open recordset of
// the table (the sync keeps one for its run), it stores through that one, so the new row is
// found there afterwards; otherwise it opens a recordset of the one row for each store.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "host/docket_object.hpp"

namespace lf {

class DatabaseService;

class PracticeDocket : public DocketObject {
 public:
  explicit PracticeDocket(DatabaseService& db, std::int32_t openDockets = 0)
      : db_(db), openDockets_(openDockets) {
    newDocket();
  }

  bool loadDocket(long docketID) override;
  void newDocket() override;
  void setUserIDNum(long id) override { put("UserIDNum", id); }
  void setFirmIDNum(long id) override { put("FirmIDNum", id); }
  void setCompanyIDNum(long id) override { put("CompanyIDNum", id); }
  void setContactIDNum(long id) override { put("ContactIDNum", id); }
  void setBillToCompanyIDNum(long id) override { put("BillToCompanyIDNum", id); }
  void setBillToContactIDNum(long id) override { put("BillToContactIDNum", id); }
  void setDateTimeFrom(const Date& start) override;
  void setDuration(double hours) override;
  void setInvoiced(bool invoiced) override { values_["Invoiced"] = invoiced ? "True" : "False"; }
  void setDocketStatus(long status) override { put("DocketStatus", status); }
  void setSubject(std::string_view subject) override { values_["Subject"] = subject; }
  void setTextBody(std::string_view body) override { values_["TextBody"] = body; }
  void setShowOnInvoice(bool show) override { values_["ShowOnInvoice"] = show ? "True" : "False"; }
  void setBillingAmount(double amount, long billingType) override;
  void setAdjustmentUp(double amount) override;
  void setAdjustmentDown(double amount) override;
  long saveDocket() override;

  long docketID() const { return docketID_; }

 private:
  void put(const std::string& column, long value) { values_[column] = std::to_string(value); }
  void computeTimesAndAmounts();

  DatabaseService& db_;
  std::int32_t openDockets_ = 0;
  long docketID_ = -1;
  std::map<std::string, std::string> values_;
  Date start_;
  bool hasStart_ = false;
  double hours_ = 1.0;
  double amount_ = 0, up_ = 0, down_ = 0;
  bool hasAmount_ = false;
};

}  // namespace lf
