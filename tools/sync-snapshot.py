#!/usr/bin/env python3
"""Practice databases after a TPS sync, kept as text and compared row for row.

    tools/sync-snapshot.py take BUILD OUTDIR [--bench]
        Generates the sample export (and with --bench the benchmark's export: 5,000 clients,
        50,000 time entries, 10,000 invoices and payments, seed 7), creates a new practice
        database for each, synchronises it with BUILD/lfimport and samples/tps_answers.json,
        and writes OUTDIR/<name>.rows: every table's rows in rowid order, one line a row.
    tools/sync-snapshot.py dump PRACTICE.db OUT.rows
        The same text of an existing practice database.
    tools/sync-snapshot.py compare BEFORE OUTDIR_OR_FILE AFTER OUTDIR_OR_FILE [--show N]
        Compares two snapshots (two .rows files, or two folders with the same .rows files),
        table by table and row by row; prints every table that differs with its first N
        differing rows and exits 1 when anything differs.

Columns that hold the clock (DateLastSync, DateCreated) are left out of the text: they differ
between any two runs.
"""
import argparse
import os
import sqlite3
import subprocess
import sys

CLOCK_COLUMNS = {"DateLastSync", "DateCreated"}
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
EXPORTS = {
    "sample": [],
    "bench": ["--clients", "5000", "--times", "50000", "--invoices", "10000",
              "--payments", "10000", "--seed", "7"],
}


def dump(practice, out_path):
    db = sqlite3.connect("file:" + practice + "?mode=ro", uri=True)
    tables = [r[0] for r in db.execute(
        "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name")]
    with open(out_path, "w", encoding="utf-8") as out:
        for table in tables:
            cur = db.execute('SELECT * FROM "%s" ORDER BY rowid' % table)
            names = [d[0] for d in cur.description]
            keep = [i for i, n in enumerate(names) if n not in CLOCK_COLUMNS]
            for row in cur:
                cells = "|".join("%s=%r" % (names[i], row[i]) for i in keep)
                out.write("%s\t%s\n" % (table, cells))
    db.close()


def take(build, outdir, bench):
    os.makedirs(outdir, exist_ok=True)
    lfimport = os.path.join(build, "lfimport")
    answers = os.path.join(ROOT, "samples", "tps_answers.json")
    for name, args in EXPORTS.items():
        if name == "bench" and not bench:
            continue
        export = os.path.join(outdir, name + "_export.db")
        practice = os.path.join(outdir, name + "_practice.db")
        for p in (export, practice, practice + "-wal", practice + "-shm"):
            if os.path.exists(p):
                os.remove(p)
        subprocess.run([sys.executable, os.path.join(ROOT, "samples", "make_tps_export.py"),
                        export] + args, check=True, stdout=subprocess.DEVNULL)
        subprocess.run([lfimport, "init", practice], check=True, stdout=subprocess.DEVNULL)
        report = os.path.join(outdir, name + "_report.json")
        status = subprocess.run([lfimport, "sync", "tps", "--source", export, "--practice",
                                 practice, "--answers", answers, "--report", report,
                                 "--quiet"]).returncode
        dump(practice, os.path.join(outdir, name + ".rows"))
        print("%s: sync exit %d, %s" % (name, status, os.path.join(outdir, name + ".rows")))


def read_rows(path):
    tables = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            table, _, cells = line.rstrip("\n").partition("\t")
            tables.setdefault(table, []).append(cells)
    return tables


def cell_difference(a, b):
    ca, cb = a.split("|"), b.split("|")
    return "; ".join("%s -> %s" % (x, y) for x, y in zip(ca, cb) if x != y) or (a + " / " + b)


def compare_files(before, after, show):
    old, new = read_rows(before), read_rows(after)
    same = True
    for table in sorted(set(old) | set(new)):
        a, b = old.get(table, []), new.get(table, [])
        if a == b:
            continue
        same = False
        differing = [i for i in range(max(len(a), len(b)))
                     if (a[i] if i < len(a) else None) != (b[i] if i < len(b) else None)]
        print("%s: %d rows before, %d after, %d rows differ" % (table, len(a), len(b),
                                                              len(differing)))
        for i in differing[:show]:
            if i >= len(a):
                print("  row %d added: %s" % (i, b[i][:300]))
            elif i >= len(b):
                print("  row %d gone: %s" % (i, a[i][:300]))
            else:
                print("  row %d: %s" % (i, cell_difference(a[i], b[i])[:600]))
    return same


def compare(before, after, show):
    if os.path.isdir(before):
        names = sorted(n for n in os.listdir(before) if n.endswith(".rows"))
        pairs = [(os.path.join(before, n), os.path.join(after, n)) for n in names]
    else:
        pairs = [(before, after)]
    same = True
    for a, b in pairs:
        print("== %s ~ %s" % (a, b))
        if compare_files(a, b, show):
            print("identical")
        else:
            same = False
    return same


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = parser.add_subparsers(dest="command", required=True)
    t = sub.add_parser("take")
    t.add_argument("build")
    t.add_argument("outdir")
    t.add_argument("--bench", action="store_true")
    d = sub.add_parser("dump")
    d.add_argument("practice")
    d.add_argument("out")
    c = sub.add_parser("compare")
    c.add_argument("before")
    c.add_argument("after")
    c.add_argument("--show", type=int, default=5)
    args = parser.parse_args()
    if args.command == "take":
        take(args.build, args.outdir, args.bench)
    elif args.command == "dump":
        dump(args.practice, args.out)
    else:
        sys.exit(0 if compare(args.before, args.after, args.show) else 1)


if __name__ == "__main__":
    main()
