// Steps, routes, validations and entry work of the sync wizard.
#include "sync/sync_wizard.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_set>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "host/file_dialog.hpp"
#include "host/file_utilities.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "records/node_keys.hpp"

namespace lf {
namespace {

std::string applicationName() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr ? locale->getApplicationName() : std::string("Ledgerfolio");
}

// The date fields' form of a date.
std::string dateFieldText(const Date& date) {
  return formatDate(date, "mmmm d, yyyy");
}

}  // namespace

SyncWizard::SyncWizard(SyncOptions& engine, SyncWizardHooks hooks,
                       const SourceDescription& description,
                       std::unique_ptr<SourceContactTree> contactTree)
    : engine_(engine),
      hooks_(std::move(hooks)),
      description_(description),
      contactTree_(std::move(contactTree)) {
  contactTree_->setTreeViewControl(&tvwContacts);
  contactTree_->setShowTreeViewCheckBoxes(true);
}

std::string SyncWizard::label(std::string_view procedureName) const {
  return SourceDescription::label(description_.formFile, description_.wizardForm, procedureName);
}

void SyncWizard::Initialize() {
  procedure(label("Form_Load"), [&] {
    duplicateCheckEnabled = engine_.duplicateCheckEnabled;
    defaultSyncDates(engine_, Date::today());
    chkSynchObjects = {engine_.syncObjectsContacts, engine_.syncObjectsTimeEntries,
                       engine_.syncObjectsInvoices, engine_.syncObjectsWorkCodes};
    chkImportOnlyWIP = engine_.importOnlyWIPTimeEntries;
    chkOnlySynchNewItems = engine_.importOnlyNewEntries;
    open_ = true;
    finished_ = false;
    step_ = -1;
    SetStep(kFirstStep, 0);
  });
}

bool SyncWizard::navEnabled(int button) const {
  if (button < kNavCancel || button > kNavFinish) return false;
  return open_ && navEnabled_[button - 1];
}

void SyncWizard::cmdNav_Click(int index) {
  procedure(label("cmdNav_Click"), [&] {
    if (!navEnabled(index)) return;
    switch (index) {
      case kNavCancel:
        open_ = false;
        break;
      case kNavBack:
        back();
        break;
      case kNavNext:
        next();
        break;
      case kNavFinish:
        finish();
        break;
    }
  });
}

int SyncWizard::routeByImportOption() const {
  return engine_.importOption == 2 ? 6 : 4;
}

void SyncWizard::next() {
  switch (step_) {
    case 0:
      engine_.syncObjectsContacts = chkSynchObjects[kSynchContacts];
      engine_.syncObjectsTimeEntries = chkSynchObjects[kSynchTimeEntries];
      engine_.syncObjectsInvoices = chkSynchObjects[kSynchInvoices];
      engine_.syncObjectsWorkCodes = chkSynchObjects[kSynchWorkCodes];
      if (engine_.syncObjectsContacts || engine_.syncObjectsTimeEntries ||
          engine_.syncObjectsInvoices || engine_.syncObjectsWorkCodes)
        SetStep(2, 1);
      else
        showMessage("You must select one of the import options to continue.");
      break;
    case 1:
      SetStep(2, 1);
      break;
    case 2:
      if (!engine_.useDatabase) {
        showMessage(description_.openFileRefusal);
      } else if (engine_.syncObjectsContacts) {
        SetStep(3, 1);
      } else if (engine_.syncObjectsTimeEntries) {
        SetStep(5, 1);
      } else if (engine_.syncObjectsInvoices) {
        SetStep(7, 1);
      }
      // Work codes alone have no step of their own: Next stays here, as it always has.
      break;
    case 3:
      getSelectedCompanies();
      if (engine_.syncObjectsContacts)
        SetStep(8, 1);
      else if (engine_.syncObjectsTimeEntries)
        SetStep(5, 1);
      else if (engine_.syncObjectsInvoices)
        SetStep(7, 1);
      break;
    case 8:
      getSelectedContacts();
      if (engine_.companyCollection.count() == 0 && engine_.contactsCollection.count() == 0)
        showMessage("You must select some " + description_.word +
                    " clients from this list or the previous list in order to import into " +
                    applicationName() + " before proceeding.");
      else if (engine_.syncObjectsTimeEntries)
        SetStep(5, 1);
      else if (engine_.syncObjectsInvoices)
        SetStep(7, 1);
      else
        SetStep(routeByImportOption(), 1);
      break;
    case 5:
      SetStep(engine_.syncObjectsInvoices ? 7 : routeByImportOption(), 1);
      break;
    case 7:
      SetStep(routeByImportOption(), 1);
      break;
    case 6:
      storeSelectedCategory();
      SetStep(4, 1);
      break;
  }
}

// Back from the category and finish steps: the invoice flag leads to the time entry step and
// the time entry flag to the invoice step, the reverse of the route forward. Intended.
int SyncWizard::backFromCategoryStep() const {
  if (engine_.syncObjectsInvoices) return 5;
  if (engine_.syncObjectsTimeEntries) return 7;
  if (engine_.syncObjectsContacts) return 8;
  return 2;
}

void SyncWizard::back() {
  switch (step_) {
    case 1:
    case 2:
      SetStep(0, -1);
      break;
    case 3:
      SetStep(2, -1);
      break;
    case 8:
      SetStep(3, -1);
      break;
    case 5:
      SetStep(engine_.syncObjectsContacts ? 8 : 2, -1);
      break;
    case 7:
      if (engine_.syncObjectsTimeEntries)
        SetStep(5, -1);
      else
        SetStep(engine_.syncObjectsContacts ? 8 : 2, -1);
      break;
    case 6:
      SetStep(backFromCategoryStep(), -1);
      break;
    case 4:
      SetStep(engine_.importOption == 2 ? 6 : backFromCategoryStep(), -1);
      break;
  }
}

void SyncWizard::finish() {
  if (!engine_.useDatabase) {
    showMessage(description_.openFileRefusal);
    return;
  }
  if (engine_.syncObjectsContacts && engine_.companyCollection.count() == 0 &&
      engine_.contactsCollection.count() == 0) {
    showMessage("You must select some " + description_.word +
                " clients from the list to import into " + applicationName() +
                " before proceeding.  Go to the step and select some clients to import.");
    return;
  }
  engine_.importOnlyNewEntries = chkOnlySynchNewItems;
  engine_.importOnlyWIPTimeEntries = chkImportOnlyWIP;
  engine_.duplicateCheckEnabled = duplicateCheckEnabled;
  finished_ = true;
  if (hooks_.importInformation) hooks_.importInformation();
  open_ = false;
}

void SyncWizard::SetStep(int target, int direction) {
  (void)direction;  // the entry work depends on the step's history, not on the direction
  procedure(label("SetStep"), [&] {
    step_ = target;
    SetNavBtns();
    enterStep(target);
  });
}

void SyncWizard::SetNavBtns() {
  navEnabled_[kNavCancel - 1] = true;
  navEnabled_[kNavBack - 1] = step_ != kFirstStep;
  navEnabled_[kNavNext - 1] = step_ != kFinishStep;
  navEnabled_[kNavFinish - 1] = step_ == kFinishStep;
}

void SyncWizard::enterStep(int target) {
  switch (target) {
    case 3:
      if (!businessListLoaded_) {
        populateClients();
        checkClientList(true, false);
        companiesAtPersonalStep_ = tvwContacts.checkedIDs();
        businessListLoaded_ = true;
      } else {
        // Left by Back before the list was ever kept: the guess again, not an empty list.
        checkClientList(true, companiesStored_);
      }
      break;
    case 8: {
      // The personal checks follow the business list whenever the user changed it since the
      // personal list last saw it, so that a client stays on one list only.
      const std::vector<std::string> companies = keysOf(engine_.companyCollection);
      if (companies != companiesAtPersonalStep_) {
        progressCaption("Selecting " + description_.word +
                        " personal tax clients, please wait ...");
        populatePersonalClientsCheckedItemsFromReverseOfCompaniesList(companies);
      } else {
        checkClientList(false, contactsStored_);
      }
      companiesAtPersonalStep_ = companies;
      break;
    }
    case 5:
    case 7:
      populateDateFields(target);
      break;
    case 6:
      populateCategories();
      break;
  }
}

void SyncWizard::checkClientList(bool business, bool stored) {
  const std::string clients = description_.word + (business ? " business" : " personal");
  if (stored) {
    progressCaption("Selecting " + clients + " clients, please wait ...");
    tvwContacts.checkOnly(
        keysOf(business ? engine_.companyCollection : engine_.contactsCollection));
    return;
  }
  progressCaption("Selecting initial " + clients + " clients, please wait ...");
  bool negation = false;
  contactTree_->populateInitialClientsCheckedItems(business, negation);
}

void SyncWizard::populateClients() {
  progressCaption("Getting " + description_.word + " contacts, please wait ...");
  contactTree_->setSourceDatabase(hooks_.sourceDatabase ? hooks_.sourceDatabase() : nullptr);
  contactTree_->populateTree();
}

void SyncWizard::populatePersonalClientsCheckedItemsFromReverseOfCompaniesList(
    const std::vector<std::string>& companies) {
  const std::unordered_set<std::string> business(companies.begin(), companies.end());
  for (int i = 0; i < tvwContacts.count(); ++i) {
    ClientTreeNode& node = tvwContacts.node(i);
    node.checked = getSelectedMajorNodeTypeFromString(node.key) == 2 &&
                   business.count(getSelectedNodeIDStringFromString(node.key)) == 0;
  }
}

void SyncWizard::getSelectedCompanies() {
  companiesStored_ = true;
  engine_.companyCollection.clearList();
  for (auto& id : tvwContacts.checkedIDs()) engine_.companyCollection.addRow({Variant::text(id)});
}

void SyncWizard::getSelectedContacts() {
  contactsStored_ = true;
  engine_.contactsCollection.clearList();
  for (auto& id : tvwContacts.checkedIDs()) engine_.contactsCollection.addRow({Variant::text(id)});
}

void SyncWizard::cmdOpenFile_Click(FileDialog& dialog) {
  procedure(label("cmdOpen" + description_.word + "File_Click"), [&] {
    dialog.setDefaultExtension(description_.fileDialogExtension);
    dialog.setDialogTitle(description_.fileDialogTitle);
    dialog.setFilter(description_.fileDialogFilter);
    dialog.setFlags(4096);
    const std::string& current = engine_.databaseLocation;
    dialog.setInitialFolder(GeneralUtilities::isBlank(current)
                                ? FileUtilities::getSystemDrive("C:\\")
                                : FileUtilities::folderOfPath(current));
    dialog.setOwnerHandle(nullptr);
    const FileDialogResult chosen = dialog.showOpen();
    if (chosen.confirmed && !GeneralUtilities::isBlank(chosen.path)) cmdOpenFile(chosen.path);
  });
}

void SyncWizard::cmdOpenFile(const std::string& chosenPath) {
  procedure(label("cmdOpen" + description_.word + "File"), [&] {
    if (GeneralUtilities::isBlank(chosenPath)) return;
    if (hooks_.setDatabaseLocation)
      hooks_.setDatabaseLocation(chosenPath);
    else
      engine_.databaseLocation = chosenPath;
    // Another export means other clients: the lists start again from their guesses.
    businessListLoaded_ = false;
    companiesStored_ = false;
    contactsStored_ = false;
    engine_.companyCollection.clearList();
    engine_.contactsCollection.clearList();
  });
}

void SyncWizard::cmdSelectAll_Click() {
  procedure(label("cmdSelectAll_Click"), [&] {
    const bool check = selectAllCaption_ == "Select All";
    selectAllCaption_ = check ? "Unselect All" : "Select All";
    contactTree_->checkAllChildNodes(check);
  });
}

SyncWizard::DateRangeFields& SyncWizard::fieldsOf(int dateStep) {
  return dateStep == 7 ? invoiceFields_ : timeFields_;
}

const SyncWizard::DateRangeFields& SyncWizard::dateFields(int dateStep) const {
  return dateStep == 7 ? invoiceFields_ : timeFields_;
}

void SyncWizard::populateDateFields(int dateStep) {
  DateRangeFields& f = fieldsOf(dateStep);
  if (dateStep == 7) {
    f.useRange = engine_.mvarUseInvoiceDateRange;
    f.rangeType = engine_.mvarInvoicesSynchDateRangeType;
    f.startText = dateFieldText(engine_.mvarInvoicesSynchStartRange);
    f.endText = dateFieldText(engine_.mvarInvoicesSynchEndRange);
  } else {
    f.useRange = engine_.mvarUseTimeEntryDateRange;
    f.rangeType = engine_.mvarTimeEntriesSynchDateRangeType;
    f.startText = dateFieldText(engine_.mvarTimeEntriesSynchStartRange);
    f.endText = dateFieldText(engine_.mvarTimeEntriesSynchEndRange);
  }
  enableDateFields(dateStep);
}

void SyncWizard::enableDateFields(int dateStep) {
  DateRangeFields& f = fieldsOf(dateStep);
  f.startEnabled = f.useRange;
  f.endEnabled = f.useRange && f.rangeType == kSynchBetween;
}

void SyncWizard::optApptSyncDate_Click(int dateStep, bool byRange) {
  fieldsOf(dateStep).useRange = byRange;
  (dateStep == 7 ? engine_.mvarUseInvoiceDateRange : engine_.mvarUseTimeEntryDateRange) = byRange;
  enableDateFields(dateStep);
}

void SyncWizard::optSynchApptDate_Click(int dateStep, long rangeType) {
  if (rangeType < kSynchOnDate || rangeType > kSynchBetween) return;
  fieldsOf(dateStep).rangeType = rangeType;
  (dateStep == 7 ? engine_.mvarInvoicesSynchDateRangeType
                 : engine_.mvarTimeEntriesSynchDateRangeType) = rangeType;
  enableDateFields(dateStep);
}

bool SyncWizard::txtDate_LostFocus(int dateStep, int which, const std::string& text) {
  DateRangeFields& f = fieldsOf(dateStep);
  std::string& box = which == 0 ? f.startText : f.endText;
  box = text;
  const std::optional<Date> parsed = DateUtilities::parseDateText(text);
  if (!parsed) {
    showMessage("You must enter a valid date.");
    return false;
  }
  const Date date = parsed->datePart();
  box = dateFieldText(date);
  if (dateStep == 7)
    (which == 0 ? engine_.mvarInvoicesSynchStartRange : engine_.mvarInvoicesSynchEndRange) = date;
  else
    (which == 0 ? engine_.mvarTimeEntriesSynchStartRange : engine_.mvarTimeEntriesSynchEndRange) =
        date;
  return true;
}

void SyncWizard::populateCategories() {
  std::vector<WizardCategory> categories;
  if (hooks_.categories) {
    categories = hooks_.categories();
  } else if (DatabaseService* db = moduleState().DatabaseReference; db != nullptr && db->isOpen()) {
    std::int32_t rs = 0;
    procedure(label("populateCategories"), [&] {
      rs = db->openRecordset(
          "SELECT Categories.CategoryID, Categories.CategoryNum, Categories.CategoryName FROM "
          "Categories;",
          kCursorKeyset, kLockReadOnly);
      for (; !db->isEOF(rs); db->moveNext(rs)) {
        const Variant parent = db->getField(rs, "CategoryNum");
        categories.push_back({db->getField(rs, "CategoryID").toLong(),
                              parent.isNull() ? -1 : parent.toLong(),
                              db->getField(rs, "CategoryName").toString()});
      }
    });
    if (rs != 0) ignoreErrors([&] { db->closeRecordset(rs); });
  }

  tvwCategories.clear();
  tvwCategories.allowOnlyOneCheckedItem = true;
  const int root = tvwCategories.add(-1, std::string(ClientTree::kRootKey), "Categories");
  tvwCategories.node(root).expanded = true;
  // Parents before children: place what can be placed until nothing moves; a category whose
  // parent is missing sits under the root.
  std::vector<bool> placed(categories.size(), false);
  for (bool moved = true; moved;) {
    moved = false;
    for (size_t i = 0; i < categories.size(); ++i) {
      if (placed[i]) continue;
      const WizardCategory& c = categories[i];
      int parent = root;
      if (c.parentID > 0) {
        parent = tvwCategories.findKey(ClientTree::categoryKey(std::to_string(c.parentID)));
        const bool parentListed = std::any_of(categories.begin(), categories.end(),
                                              [&](const auto& p) { return p.id == c.parentID; });
        if (parent < 0 && parentListed) continue;
        if (parent < 0) parent = root;
      }
      tvwCategories.add(parent, ClientTree::categoryKey(std::to_string(c.id)), c.name);
      placed[i] = moved = true;
    }
  }
  const int inUse =
      tvwCategories.findKey(ClientTree::categoryKey(std::to_string(engine_.importCategory)));
  if (inUse >= 0) {
    tvwCategories.checkAllChildNodes(true, inUse);
    tvwCategories.selected = inUse;
  }
}

void SyncWizard::storeSelectedCategory() {
  const std::vector<std::string> checked = tvwCategories.checkedIDs(3);
  if (!checked.empty()) engine_.importCategory = std::stol(checked.front());
}

void SyncWizard::showMessage(const std::string& text) const {
  if (MessageBox* box = moduleState().MsgboxClass) box->show(text, kMessageValidation);
}

void SyncWizard::progressCaption(const std::string& caption) const {
  if (hooks_.showProgressCaption) hooks_.showProgressCaption(caption);
}

SyncWizard::StepCaptions SyncWizard::captions() const {
  StepCaptions c;
  const std::string app = applicationName();
  const std::string& word = description_.word;
  const std::string title = word + " Import Wizard";
  switch (step_) {
    case 0:
      c.title = title;
      c.options = {"Staff, clients and invoice paragraphs", "Time entries", "Invoices and deposits",
                   "Work codes"};
      break;
    case 1:
      c.title = title;
      c.label =
          "This wizard brings the staff, clients, work codes, time entries and invoices of "
          "a " +
          word + " export into " + app + ".";
      break;
    case 2:
      c.title = title;
      c.label = "Open the " + word + " Export file, usually named 'Export.mdb'.";
      break;
    case 3:
    case 8: {
      // The two client steps say the same of business and of personal tax clients.
      const bool business = step_ == 3;
      const std::string kind = business ? "business clients" : "personal tax clients";
      c.title =
          title + " - Select the " + (business ? "business companies" : kind) + " to synchronize";
      c.heading = business ? "Business Clients Import" : "Personal Tax Clients Import";
      c.label = "Select only the " + kind + " from the list of " + word +
                " client shown that you would like to import into " + app + ":";
      c.checkBox = business ? "Select Only Clients Appear To Be Business Clients"
                            : "Select Only Clients Appear To Be Personal Tax Clients";
      break;
    }
    case 5:
    case 7: {
      // The two date steps say the same of time entries and of invoices.
      const std::string items = step_ == 5 ? "time entries" : "invoices";
      c.title = title + " - Select Date Range";
      c.heading = step_ == 5 ? " Time Entry Synch Options" : " Invoice Synch Options";
      c.options = {"Synch all " + items,
                   "Synch " + items + " by a date range",
                   "Synch " + items + " on:",
                   "Synch " + items + " on or after:",
                   "Synch " + items + " on or before:",
                   "Synch " + items + " between:"};
      break;
    }
    case 6:
      c.title = title;
      c.heading = "Category:";
      c.label = "Select the category you would like to import the clients into:";
      break;
    case 4:
      c.title = title + " - Finish";
      break;
  }
  return c;
}

std::string SyncWizard::summary() const {
  auto range = [](bool use, long type, const Date& start, const Date& end) -> std::string {
    if (!use) return "all";
    static const char* const words[] = {"on ", "on or after ", "on or before ", "between "};
    std::string text = words[type >= 0 && type <= 3 ? type : 1] + dateFieldText(start);
    if (type == kSynchBetween) text += " and " + dateFieldText(end);
    return text;
  };
  std::string s = description_.word + " export: " + engine_.databaseLocation + "\n";
  if (engine_.syncObjectsContacts)
    s += "Staff, clients and invoice paragraphs: " +
         std::to_string(engine_.companyCollection.count()) + " business and " +
         std::to_string(engine_.contactsCollection.count()) + " personal clients\n";
  if (engine_.syncObjectsWorkCodes) s += "Work codes\n";
  if (engine_.syncObjectsTimeEntries)
    s += "Time entries: " +
         range(engine_.mvarUseTimeEntryDateRange, engine_.mvarTimeEntriesSynchDateRangeType,
               engine_.mvarTimeEntriesSynchStartRange, engine_.mvarTimeEntriesSynchEndRange) +
         "\n";
  if (engine_.syncObjectsInvoices)
    s += "Invoices and deposits: " +
         range(engine_.mvarUseInvoiceDateRange, engine_.mvarInvoicesSynchDateRangeType,
               engine_.mvarInvoicesSynchStartRange, engine_.mvarInvoicesSynchEndRange) +
         "\n";
  return s;
}

}  // namespace lf
