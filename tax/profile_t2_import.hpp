// clsImportProfileT2: the corporations of Profile T2 returns (".GT2") into the practice
// database as companies, with their signing officer and second contact as contacts.
//
// The file list is that of the personal import, with the normalised business number in
// column 5 and the year end in column 6. The selection ticks the files of corporations not yet
// known, or only the most recent return of each business number. One automation object serves
// the whole run. Progress goes to the events below instead of a dialog of the class's own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "frame/import_services.hpp"
#include "tax/profile_automation_layer.hpp"

namespace lf {

class ImportDuplicatesControl;
class RowWriteGroups;
struct StageCounters;

struct ProfileT2FileRow {
  std::string key;             // 1
  std::string path;            // 2
  std::string display;         // 3
  bool selected = true;        // 4
  std::string businessNumber;  // 5: normalised, from the analysis
  std::string yearEnd;         // 6: the year-end date as "YYYY-MM-DD", from the analysis
};

class clsImportProfileT2 : public ImportServices, public ProfileAutomationLayer {
 public:
  clsImportProfileT2() : ProfileAutomationLayer(Family::T2) {}

  std::vector<ProfileT2FileRow> profileFileList;
  void addProfileFileToImportList(const std::string& path);
  void selectAllProfileFiles(bool selected);
  void selectSpecificProfileT2Files();

  bool successFlag = false;
  bool selectOnlyMostRecentClientsFlag = false;
  bool selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = false;
  // Set from the wizard's text ("Profile Head Office Address" 1, "Profile Mailing Address" 2,
  // "Profile Location of Books Address" 3, "Profile Signing Officer Address" 4).
  void setProfileAddressType(const std::string& text);
  int profileAddressType = 1;

  ImportDuplicatesControl* companyDuplicatesControl = nullptr;
  StageCounters* counters = nullptr;

  // Events.
  std::function<void(long total)> importingProfileClientsStart;
  std::function<void(long position, long total)> importingProfileClientsInc;
  std::function<void(const std::string& caption)> importingProfileClientsPrompt;
  std::function<void()> importingProfileClientsStop;

  // Tests Profile and counts the selected files; false, after its message, when none is.
  bool startImportProfileT2Files();
  // The loop over the selected files.
  void importProfileT2Files();
  // One return; answers whether its company was written.
  bool importProfileT2File(const std::string& path);

 private:
  void getAnalysisInfoFromAllProfileFiles();

  long nextFileKey_ = 1;
  std::unique_ptr<ProfileFile> file_;
  bool created_ = false;
  // The write groups of the running file loop; none outside it (each return commits alone).
  RowWriteGroups* rowGroups_ = nullptr;
};

}  // namespace lf
