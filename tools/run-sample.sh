#!/usr/bin/env bash
# The main job on the bundled sample data: sets up a Debian machine, builds lfimport, creates
# a new practice database, generates the fictional TPS export and synchronises it with the
# sample wizard answers, then shows the run report and what the practice database holds.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup-debian.sh
tools/build.sh build
mkdir -p build/sample
practice=build/sample/practice.db
export_db=build/sample/tps_export.db
report=build/sample/tps_sync_report.json
rm -f "$practice" "$practice-wal" "$practice-shm" "$export_db" "$report"
build/lfimport init "$practice"
python3 samples/make_tps_export.py "$export_db"
status=0
build/lfimport sync tps --source "$export_db" --practice "$practice" \
  --answers samples/tps_answers.json --report "$report" || status=$?
echo "Run report ($report):"
cat "$report"
build/lfimport info "$practice"
exit "$status"
