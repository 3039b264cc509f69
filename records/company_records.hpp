// The company procedures of modDatabaseClientFunctions: the family of rows that makes a
// business client visible to the host's main business selection.
//
// A business client is a Companies row, its CompaniesNotes and Clients rows, one ClientData
// row and eight one-to-one satellites carrying the ClientDataID (AccountingServices,
// ClientOptions, ClientNotes, CorpTaxInfo, LawInfo, OtherInfo, WSIB_EHTInfo, ClientUSInfo).
// The main selection joins them with inner joins, so one missing row hides the client. Both
// procedures test each row before adding it, so that running them again repairs a family
// that an interrupted import left incomplete. They write no name: the caller sets
// CompanyName and the other columns afterwards.
#pragma once

namespace lf {

// Creates a new company with its whole family and answers the ClientDataID; -1 when the
// practice database is closed or the first statement failed. The company is
// getCompanyIDFromClientDataID of the result; its CompanyName is the empty text and its
// CategoryNum the drop-down service's current category.
long addNewClientDataEntry();

// Completes the family of an existing company (ClientData first, then Clients, then the
// satellites; the Companies and CompaniesNotes rows are not touched) and answers its
// ClientDataID, the existing one when there is one; -1 when the database is closed.
long addNewClientDataEntryForExistingCompany(long companyID);

}  // namespace lf
