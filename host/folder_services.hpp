// The tasks and working-folder services. The sync family stores them and never calls them;
// the text imports take their default folder from the working folder.
#pragma once

#include <string>

namespace lf {

class TasksService {
 public:
  virtual ~TasksService() = default;
};

class WorkingFolderService {
 public:
  virtual ~WorkingFolderService() = default;
  virtual std::string getImportFolder() = 0;
};

}  // namespace lf
