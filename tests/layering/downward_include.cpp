// Built by the LayeringProbe.downward test, as a file of the sync layer: every layer below it
// is visible, down to the base helpers.
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "sync/sync_engine.hpp"
