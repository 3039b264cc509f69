// The practice database the fuzz targets that run an import write into: in memory, with the
// practice schema and its seed rows (current year 2025), and the host services an import reads
// from the module state. A target makes it anew every few dozen inputs so that it stays small.
#pragma once

#include <memory>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/practice_database.hpp"
#include "host/practice_host_services.hpp"

namespace lf::fuzzing {

struct Practice {
  Database db;
  std::unique_ptr<PracticeLocale> locale;
  std::unique_ptr<PracticeClientDropDown> dropDown;
};

// A new seeded practice database, installed in the module state.
inline std::unique_ptr<Practice> freshPractice() {
  auto pr = std::make_unique<Practice>();
  pr->db.createNew(":memory:");
  createPracticeTables(pr->db);
  PracticeSeed seed;
  seed.currentYear = 2025;
  seedPracticeDatabase(pr->db, seed);
  pr->locale = std::make_unique<PracticeLocale>(pr->db);
  pr->dropDown = std::make_unique<PracticeClientDropDown>(pr->db);
  ModuleState& state = moduleState();
  state.DatabaseReference = &pr->db;
  state.LocaleReference = pr->locale.get();
  state.clientDropDownCtrlReference = pr->dropDown.get();
  return pr;
}

}  // namespace lf::fuzzing
