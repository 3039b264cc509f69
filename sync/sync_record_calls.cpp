// The client-record and summary operations of the sync stages.
#include "sync/sync_record_calls.hpp"

#include "records/company_records.hpp"
#include "records/contact_records.hpp"
#include "records/default_contacts.hpp"
#include "records/personal_tax_records.hpp"
#include "summaries/address_blocks.hpp"
#include "summaries/address_fields.hpp"
#include "summaries/company_summaries.hpp"
#include "summaries/contact_summaries.hpp"

namespace lf::syncrecords {

long addNewClientDataEntry() {
  return lf::addNewClientDataEntry();
}

long addNewClientDataEntryForExistingCompany(long companyID) {
  return lf::addNewClientDataEntryForExistingCompany(companyID);
}

long addNewContact(const std::string& fullName) {
  return lf::addNewContact(fullName, -1, -1);
}

bool addContactLink(long contactID, long categoryID, long companyID) {
  return lf::addContactLink(contactID, categoryID, companyID, -1, "", false);
}

void addNewPersonalTaxClientForExistingContact(long contactID, long categoryID, long taxYear,
                                               long activeStatus) {
  lf::addNewPersonalTaxClientForExistingContact(contactID, categoryID, taxYear, activeStatus);
}

void setContactAsDefault(long contactID, long companyID) {
  lf::setContactAsDefault(contactID, companyID, false);
}

long getDefaultContactIDFromCompanyID(long companyID) {
  return lf::getDefaultContactIDFromCompanyID(companyID);
}

long addAccountantEmployee(const std::string& fullName, long firmCompanyID, long userLevel) {
  return lf::addAccountantEmployee(fullName, firmCompanyID, userLevel);
}

std::string createAddress(std::string_view street, std::string_view city, std::string_view province,
                          std::string_view postalCode, std::string_view country) {
  AddressFields fields;
  fields.Street = street;
  fields.City = city;
  fields.Province = province;
  fields.PostalCode = postalCode;
  fields.Country = country;
  return lf::createAddress(fields, false, false);
}

std::string convertToRTF(std::string_view text) {
  return lf::convertToRTF(text);
}

void saveCompanyRTF(long companyID) {
  lf::saveCompanyRTF(companyID, -1);
}

void saveCompanyContactRTF(long companyID, long contactID) {
  lf::saveCompanyContactRTF(companyID, contactID);
}

void saveContactBusinessRTF(long contactID) {
  lf::saveContactBusinessRTF(contactID, -1, -1, false);
}

void saveContactPersonalRTF(long contactID) {
  lf::saveContactPersonalRTF(contactID, -1);
}

void saveContactPersonalTaxRTF(long contactID, long taxYear) {
  lf::saveContactPersonalTaxRTF(contactID, taxYear, -1);
}

void saveEmployeeBusinessRTF(long employeeID) {
  lf::saveContactBusinessRTF(-1, employeeID, -1, true);
}

void saveEmployeePersonalRTF(long employeeID) {
  lf::saveContactPersonalRTF(-1, employeeID);
}

}  // namespace lf::syncrecords
