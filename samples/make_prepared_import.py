#!/usr/bin/env python3
"""Builds a fictional prepared import database (SQLite) for the batch imports of opening
balances: `lfimport import wip`, `lfimport import invoices` and `lfimport import ar`.

The database holds the two tables the imports read: WIP (work in progress, one row a time
entry) and AR (one row an open invoice, which also carries the client's aged balances in the
columns named 30, 90, 180 and 275), and a Firm row whose FirmID keys the cross-references.
Without size options it writes a small fixed sample with the cases the imports tell apart: a
client that several rows share, business and personal clients that are asked about, a row
without a client name, a blank due date, hours that are no number, a row without an employee
code, balances in some buckets only, a zero balance, money with "$" and parentheses. With
--clients or --rows it generates that many clients and WIP and AR rows from --seed instead.
Every name and number is made up.

    samples/make_prepared_import.py samples/prepared_import.db
    samples/make_prepared_import.py /tmp/big_prepared.db --clients 500 --rows 5000 --seed 7
"""

import argparse
import os
import random
import sqlite3
import sys

SCHEMA = """
CREATE TABLE Firm (
  FirmID TEXT, Name TEXT);
CREATE TABLE WIP (
  ClientID TEXT, ClientName TEXT, EmployeeCode TEXT, DueDate DATETIME, Hours TEXT,
  Activity TEXT, Engagement TEXT, Project TEXT);
CREATE TABLE AR (
  ClientID TEXT, ClientName TEXT, InvoiceID TEXT, DueDate DATETIME, Amount TEXT,
  Taxes TEXT, Total TEXT, "30" TEXT, "90" TEXT, "180" TEXT, "275" TEXT);
"""

WIP_COLUMNS = ["ClientID", "ClientName", "EmployeeCode", "DueDate", "Hours", "Activity",
               "Engagement", "Project"]
AR_COLUMNS = ["ClientID", "ClientName", "InvoiceID", "DueDate", "Amount", "Taxes", "Total",
              "30", "90", "180", "275"]

# ---------------------------------------------------------------------------------------
# The fixed sample.

WIP = [
    ("P100", "Harbourline Marine Ltd", "MQ", "2026-03-02 00:00:00", "2.5", "Year-end review",
     "2025 audit", "Fieldwork"),
    ("P100", "Harbourline Marine Ltd", "MQ", "2026-03-03 00:00:00", "1", "Payroll remittances",
     None, None),
    ("P200", "Tamsin Okonedo", "RV", "2026-03-04 00:00:00", "0.75", "Personal return", None,
     "T1 2025"),
    ("P300", "Cobblers Row Bakery Inc", "RV", "2026-03-05 00:00:00", "about two", "Bookkeeping",
     None, None),
    ("P200", "Tamsin Okonedo", None, "2026-03-06 00:00:00", "1", "Call with client", None, None),
    ("P400", None, "MQ", "2026-03-06 00:00:00", "1", "Planning", None, None),
]

AR = [
    ("P100", "Harbourline Marine Ltd", "INV-7001", "2026-02-15 00:00:00", "1200.00", "156.00",
     "1356.00", "1356.00", None, None, None),
    ("P200", "Tamsin Okonedo", "INV-7002", None, "$300.00", "39.00", "339.00", None, "339.00",
     None, "120.50"),
    ("P300", "Cobblers Row Bakery Inc", "INV-7003", "2026-01-31 00:00:00", "($50.00)", "0",
     "($50.00)", "0", "880.25", "410.00", "0"),
    ("P500", "Wrenfield Dental Partners", "INV-7004", "2026-02-28 00:00:00", "640.00", "83.20",
     "723.20", "723.20", None, None, None),
]


def insert(db, table, columns, rows):
    marks = ", ".join("?" for _ in columns)
    names = ", ".join('"%s"' % c for c in columns)
    db.executemany("INSERT INTO %s (%s) VALUES (%s)" % (table, names, marks), rows)


def write_fixed(db):
    insert(db, "Firm", ["FirmID", "Name"], [("PREP-2026", "Quayle Ledger Services")])
    insert(db, "WIP", WIP_COLUMNS, WIP)
    insert(db, "AR", AR_COLUMNS, AR)


# ---------------------------------------------------------------------------------------
# Generated data.

FIRST = ["Alma", "Bram", "Cora", "Dag", "Elin", "Finn", "Gwen", "Hal", "Ines", "Jory"]
LAST = ["Ashcombe", "Brindle", "Corran", "Dunmore", "Elsworth", "Fallow", "Garrick", "Hobb"]
TRADES = ["Joinery", "Bakery", "Marine", "Dental", "Orchards", "Freight", "Print", "Tooling"]
FORMS = [" Ltd", " Inc", " LLP", " Partners", ""]
ACTIVITIES = ["Bookkeeping", "Year-end review", "Tax planning", "Payroll", "Advice"]


def money(rng, low, high):
    return "%.2f" % (rng.randrange(low * 100, high * 100) / 100.0)


def write_generated(db, rng, clients, rows):
    insert(db, "Firm", ["FirmID", "Name"], [("PREP-%d" % rng.randrange(10000), "Generated")])
    names = []
    for n in range(clients):
        if rng.random() < 0.5:
            name = rng.choice(LAST) + " " + rng.choice(TRADES) + rng.choice(FORMS)
        else:
            name = rng.choice(FIRST) + " " + rng.choice(LAST)
        names.append(("G%05d" % n, name))
    if not names:
        return
    wip, ar = [], []
    for n in range(rows):
        client_id, name = rng.choice(names)
        day = "2026-%02d-%02d 00:00:00" % (rng.randrange(1, 13), rng.randrange(1, 29))
        wip.append((client_id, name, rng.choice(["MQ", "RV", "AT"]), day,
                    rng.choice(["0.25", "0.5", "1", "1.5", "2"]), rng.choice(ACTIVITIES),
                    rng.choice([None, "2025 engagement"]), rng.choice([None, "General"])))
        amount = float(money(rng, 50, 3000))
        buckets = [rng.choice([None, "0", money(rng, 10, 900)]) for _ in range(4)]
        ar.append((client_id, name, "G-INV-%06d" % n, day, "%.2f" % amount,
                   "%.2f" % (amount * 0.13), "%.2f" % (amount * 1.13), *buckets))
    insert(db, "WIP", WIP_COLUMNS, wip)
    insert(db, "AR", AR_COLUMNS, ar)


def main(argv):
    parser = argparse.ArgumentParser(description="Build a fictional prepared import database.")
    parser.add_argument("output", help="path of the SQLite file to write (replaced if present)")
    parser.add_argument("--clients", type=int, help="number of generated clients")
    parser.add_argument("--rows", type=int, help="number of generated WIP and AR rows")
    parser.add_argument("--seed", type=int, default=1, help="seed of the generated data")
    args = parser.parse_args(argv)

    sizes = [args.clients, args.rows]
    if any(s is not None and s < 0 for s in sizes):
        parser.error("sizes must not be negative")

    if os.path.exists(args.output):
        os.remove(args.output)
    db = sqlite3.connect(args.output)
    try:
        db.executescript(SCHEMA)
        with db:
            if all(s is None for s in sizes):
                write_fixed(db)
            else:
                write_generated(db, random.Random(args.seed), *(s or 0 for s in sizes))
    finally:
        db.close()
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
