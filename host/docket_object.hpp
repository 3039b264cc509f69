// The docket (time entry) object of the host's billing library: one entry of a user's time,
// built through its setters and stored with saveDocket, which gives its key.
#pragma once

#include <string_view>

#include "base/variant.hpp"

namespace lf {

class DocketObject {
 public:
  virtual ~DocketObject() = default;

  // Loads an existing docket; false when there is none (the object then holds a new one).
  virtual bool loadDocket(long docketID) = 0;
  virtual void newDocket() = 0;

  virtual void setUserIDNum(long id) = 0;
  virtual void setFirmIDNum(long id) = 0;
  virtual void setCompanyIDNum(long id) = 0;
  virtual void setContactIDNum(long id) = 0;
  virtual void setBillToCompanyIDNum(long id) = 0;
  virtual void setBillToContactIDNum(long id) = 0;
  // Date and start time of the entry.
  virtual void setDateTimeFrom(const Date& start) = 0;
  // Duration in hours; the end time follows from the start.
  virtual void setDuration(double hours) = 0;
  virtual void setInvoiced(bool invoiced) = 0;
  virtual void setDocketStatus(long status) = 0;
  virtual void setSubject(std::string_view subject) = 0;
  virtual void setTextBody(std::string_view body) = 0;
  virtual void setShowOnInvoice(bool show) = 0;
  virtual void setBillingAmount(double amount, long billingType) = 0;
  // Adjustments of the billed amount: an amount added, and an amount taken off.
  virtual void setAdjustmentUp(double amount) = 0;
  virtual void setAdjustmentDown(double amount) = 0;

  // Stores the docket (a new row, or the loaded one) and gives its DocketID.
  virtual long saveDocket() = 0;
};

}  // namespace lf
