// Client matching, once for every source and role: the cross-reference first, then the
// duplicate finders, then, for a row whose client was not selected, the user's answer.
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/message_box.hpp"
#include "sync/sync_engine.hpp"
#include "sync/sync_values.hpp"

namespace lf {
namespace {

// Gives the finder the candidate's names and code from the current source row; a column
// that is blank is not given.
void describeCandidate(DuplicateFinder& finder, const ClientCandidate& candidate,
                       DatabaseService& source) {
  auto column = [&](const std::string& name) {
    return name.empty() ? std::string() : SyncEngine::readText(source, *candidate.rows, name);
  };
  const std::string first = column(candidate.columns.firstName);
  const std::string last = column(candidate.columns.lastName);
  const std::string company = column(candidate.columns.companyName);
  const std::string display = candidate.columns.displayName.empty()
                                  ? joinPresent({first, last})
                                  : column(candidate.columns.displayName);
  const std::string code = column(candidate.columns.clientCode);
  if (!company.empty()) finder.setCompanyName(company);
  if (!first.empty()) finder.setFirstName(first);
  if (!last.empty()) finder.setLastName(last);
  if (!display.empty()) finder.setDisplayName(display);
  if (!code.empty()) finder.setClientCode(code);
}

}  // namespace

long SyncEngine::matchClient(ClientRole role, const std::string& sourceID, bool& checkFlag,
                             bool& isNew) {
  const ClientCandidate& candidate = clientCandidates[static_cast<int>(role)];
  long result = -1;
  isNew = true;
  procedure(label(candidate.procedureName), [&] {
    pumpEvents(candidate.pumps);
    result = xref_.find(candidate.crossReference, sourceID);
    if (result != -1) {
      isNew = false;
      return;
    }
    if (!checkFlag) return;
    const bool company = role == ClientRole::Company;
    DuplicateFinder& finder = company ? companyFinder() : contactFinder();
    finder.clearSearch();
    if (source_ != nullptr && candidate.rows != nullptr &&
        findKey(*source_, *candidate.rows, candidate.searchColumns, sourceID))
      describeCandidate(finder, candidate, *source_);
    // The company finder tries its own matches (modes 1 and 2) before it asks the user.
    for (int mode : {1, 2}) {
      if (!company) break;
      finder.setSearchMode(mode);
      finder.runSearch();
      if (finder.hasAutoMatch()) {
        result = finder.getAutoMatchID();
        isNew = false;
        return;
      }
    }
    // Mode 3: the user is shown the likely matches and may take one.
    finder.setDuplicateCheckEnabled(true);
    finder.setSearchMode(3);
    finder.runSearch();
    if (finder.hasChosenMatch()) {
      result = finder.getChosenMatchID();
      isNew = false;
    }
  });
  return result;
}

void SyncEngine::clientOfSourceRow(const std::string& sourceID, long& companyID, long& contactID) {
  bool noCheck = false;
  bool isNew = true;
  companyID = matchClient(ClientRole::Company, sourceID, noCheck, isNew);
  contactID = matchClient(ClientRole::ContactOfClient, sourceID, noCheck, isNew);
  if (companyID != -1 || contactID != -1) return;
  // The client was not selected for import: the user says what it is, and it is made now.
  MessageBox* box = moduleState().MsgboxClass;
  const std::string name = clientCreators.name ? clientCreators.name(sourceID) : std::string();
  const int answer = box != nullptr
                         ? box->ask(name + ": Is this a business client?", kMessageValidation)
                         : kAnswerNo;
  bool check = companyFinder().duplicateCheckEnabled();
  if (answer == kAnswerYes) {
    companyID = matchClient(ClientRole::Company, sourceID, check, isNew);
    companyID = clientCreators.company(sourceID, companyID);
    beforeCrossReference();
    xref_.store(CrossReferenceKind::CompanyClient, companyID, sourceID);
    contactID = -1;
  } else {
    companyID = -1;
    contactID = matchClient(ClientRole::ContactOfClient, sourceID, check, isNew);
    contactID = clientCreators.contact(sourceID, contactID, -1, -1);
    beforeCrossReference();
    xref_.store(CrossReferenceKind::ContactClient, contactID, sourceID);
  }
}

bool SyncEngine::clientOfRecord(std::int32_t rows, std::string_view keyColumn,
                                const std::string& key, std::string_view clientColumn,
                                long& companyID, long& contactID) {
  const std::string client = readText(*source_, rows, clientColumn);
  return clientOfRecordKey(rows, keyColumn, key, client, companyID, contactID);
}

bool SyncEngine::clientOfRecord(std::int32_t rows, std::string_view keyColumn,
                                const std::string& key, long& companyID, long& contactID) {
  std::vector<std::string> parts;
  bool blank = true;
  for (const std::string& column : description_.clientKey.columns) {
    parts.push_back(readText(*source_, rows, column));
    blank = blank && parts.back().empty();
  }
  const std::string client = blank ? std::string() : ClientKeyShape::join(parts);
  return clientOfRecordKey(rows, keyColumn, key, client, companyID, contactID);
}

bool SyncEngine::clientOfRecordKey(std::int32_t rows, std::string_view keyColumn,
                                   const std::string& key, const std::string& client,
                                   long& companyID, long& contactID) {
  if (client.empty()) {
    skipBecause("no client");
    return false;
  }
  clientOfSourceRow(client, companyID, contactID);
  source_->findRecord(rows, keyColumn, key);
  return true;
}

}  // namespace lf
