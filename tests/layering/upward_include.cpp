// Built by the LayeringProbe.upward test, as a file of the database layer: the sync layer sits
// above it, so this include must not be found.
#include "db/database_service.hpp"
#include "sync/sync_engine.hpp"
