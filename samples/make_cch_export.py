#!/usr/bin/env python3
"""Builds a fictional CCH Practice export database (SQLite) for trying the CCH Practice sync.

Without size options it writes a small fixed sample that covers the cases the sync has to
tell apart: clients known by ClientID and Engagement (one client with two engagements),
companies with " LLP" and " PARTNER" in their names, persons, contacts of a business client,
staff with billing rates and an administrator, bill codes, categories, work codes that are
chargeable ("C"), not chargeable ("N") and never billed ("B"), WIP entries of every billing
status, invoices (AR) and deposits (CASH) that pay them fully, in part, over the amount, or
are reversed. With --clients or --entries it generates that many clients and WIP, AR and CASH
rows from --seed instead (--wip, --invoices and --deposits give one table a count of its
own). Every name, number and address is made up.

Tables and columns are the ones the sync reads. Dates are stored as text
"YYYY-MM-DD HH:MM:SS".

    samples/make_cch_export.py samples/cch_export.db
    samples/make_cch_export.py /tmp/big_cch.db --clients 2000 --entries 20000 --seed 7
"""

import argparse
import os
import random
import sqlite3
import sys

SCHEMA = """
CREATE TABLE Firm (
  FirmID TEXT, Name TEXT);
CREATE TABLE Staff (
  EmpID TEXT PRIMARY KEY, FirstName TEXT, MiddleName TEXT, LastName TEXT,
  PersonalTitle TEXT, StaffLevel TEXT, Inactive TEXT, SSN TEXT, HomePhone TEXT,
  OtherPhone TEXT, Address1 TEXT, Address2 TEXT, City TEXT, State TEXT, Zip TEXT,
  Country TEXT, JobTitle TEXT, WorkEmail TEXT, HomeEmail TEXT, Rate1 TEXT, Rate2 TEXT,
  Rate3 TEXT, Rate4 TEXT, Rate5 TEXT, Rate6 TEXT, Rate7 TEXT, Rate8 TEXT, Rate9 TEXT,
  Rate10 TEXT);
CREATE TABLE Client (
  ClientID TEXT, Engagement TEXT, Name1 TEXT, Address1 TEXT, City TEXT, State TEXT,
  ZIP TEXT, Country TEXT, AltAddress1 TEXT, AltCity TEXT, AltState TEXT, AltZIP TEXT,
  AltCountry TEXT, Phone TEXT, Extension TEXT, Fax TEXT, FaxExtension TEXT, Email TEXT,
  FederalTaxID TEXT, YearEnd TEXT, StateTaxID TEXT, Partner TEXT, Manager TEXT,
  PRIMARY KEY (ClientID, Engagement));
CREATE TABLE CONTACT (
  ContactGUID TEXT PRIMARY KEY, ClientID TEXT, Engagement TEXT, FirstName TEXT,
  MiddleName TEXT, LastName TEXT, Phone TEXT, OtherPhone TEXT, Address1 TEXT, City TEXT,
  State TEXT, ZIP TEXT, Country TEXT, JobTitle TEXT, Email TEXT);
CREATE TABLE Category (
  Category TEXT PRIMARY KEY, Name TEXT);
CREATE TABLE WorkCode (
  Workcode TEXT PRIMARY KEY, Name TEXT, CategoryID TEXT, Chargeable TEXT);
CREATE TABLE BillCode (
  BillID TEXT PRIMARY KEY, Name TEXT, EnglishMemo TEXT, DefaultAmount TEXT);
CREATE TABLE WIP (
  ReferenceNumber TEXT PRIMARY KEY, ClientID TEXT, Engagement TEXT, EmpID TEXT,
  Hours REAL, TranDate DATETIME, WorkCode TEXT, Name TEXT, Description TEXT,
  AdjAmount TEXT, BillingStatus TEXT);
CREATE TABLE AR (
  ReferenceNumber TEXT PRIMARY KEY, ClientID TEXT, Engagement TEXT, InvoiceNumber TEXT,
  InvoiceDate DATETIME, FinalBillAmt TEXT, Tax1 TEXT, Tax2 TEXT, Tax3 TEXT);
CREATE TABLE CASH (
  ReferenceNumber TEXT PRIMARY KEY, ARReference TEXT, ClientID TEXT, Engagement TEXT,
  CheckNumber TEXT, DateReceived DATETIME, DatePosted DATETIME, DateApplied DATETIME,
  Reversed TEXT, OriginalAmount TEXT, Description TEXT, InternalMemo TEXT);
"""

CLIENT_COLUMNS = [
    "ClientID", "Engagement", "Name1", "Address1", "City", "State", "ZIP", "Country",
    "AltAddress1", "AltCity", "AltState", "AltZIP", "AltCountry", "Phone", "Extension", "Fax",
    "FaxExtension", "Email", "FederalTaxID", "YearEnd", "StateTaxID", "Partner", "Manager"]
STAFF_COLUMNS = [
    "EmpID", "FirstName", "MiddleName", "LastName", "PersonalTitle", "StaffLevel", "Inactive",
    "SSN", "HomePhone", "OtherPhone", "Address1", "Address2", "City", "State", "Zip", "Country",
    "JobTitle", "WorkEmail", "HomeEmail"] + ["Rate%d" % i for i in range(1, 11)]
CONTACT_COLUMNS = [
    "ContactGUID", "ClientID", "Engagement", "FirstName", "MiddleName", "LastName", "Phone",
    "OtherPhone", "Address1", "City", "State", "ZIP", "Country", "JobTitle", "Email"]
WIP_COLUMNS = [
    "ReferenceNumber", "ClientID", "Engagement", "EmpID", "Hours", "TranDate", "WorkCode",
    "Name", "Description", "AdjAmount", "BillingStatus"]
AR_COLUMNS = [
    "ReferenceNumber", "ClientID", "Engagement", "InvoiceNumber", "InvoiceDate",
    "FinalBillAmt", "Tax1", "Tax2", "Tax3"]
CASH_COLUMNS = [
    "ReferenceNumber", "ARReference", "ClientID", "Engagement", "CheckNumber", "DateReceived",
    "DatePosted", "DateApplied", "Reversed", "OriginalAmount", "Description", "InternalMemo"]


def stamp(year, month, day, hour=0, minute=0):
    return "%04d-%02d-%02d %02d:%02d:00" % (year, month, day, hour, minute)


def row(columns, **values):
    return tuple(values.get(c) for c in columns)


def insert(db, table, columns, rows):
    marks = ", ".join("?" for _ in columns)
    names = ", ".join('"%s"' % c for c in columns)
    db.executemany("INSERT INTO %s (%s) VALUES (%s)" % (table, names, marks), rows)


# ---------------------------------------------------------------------------------------
# The fixed sample.

CATEGORIES = [("ACC", "Accounting"), ("TAX", "Taxation"), ("ADM", "Administration")]

WORK_CODES = [
    ("BK", "Bookkeeping", "ACC", "C"), ("FS", "Financial statements", "ACC", "C"),
    ("T1", "Personal return", "TAX", "C"), ("T2", "Corporate return", "TAX", "N"),
    ("TRN", "Staff training", "ADM", "B"), ("OFF", "Office time", "ADM", "B"),
]

BILL_CODES = [
    ("B1", "Bookkeeping", "Bookkeeping services for the period", "250.00"),
    ("B2", "Year end", "Year-end financial statements and adjustments", "1200.00"),
    ("B3", "Personal tax", "Preparation and filing of your personal return", "95.00"),
]

STAFF = [
    row(STAFF_COLUMNS, EmpID="E1", FirstName="Marion", LastName="Quayle", PersonalTitle="Ms.",
        StaffLevel="ADM", Inactive="F", SSN="046 454 286", HomePhone="555-0140",
        Address1="14 Larch Row", Address2="Unit 2", City="Westmere", State="ON", Zip="K0A 1B0",
        Country="Canada", JobTitle="Partner", WorkEmail="marion@quayle-ledger.example",
        Rate1="180.00", Rate2="150.00", Rate3="120.00"),
    row(STAFF_COLUMNS, EmpID="E2", FirstName="Tobias", MiddleName="R", LastName="Fenwick",
        StaffLevel="STF", Inactive="F", HomePhone="555-0141", OtherPhone="555-0191",
        JobTitle="Senior accountant", WorkEmail="tobias@quayle-ledger.example",
        HomeEmail="tfenwick@mailbox.example", Rate1="95.00"),
    row(STAFF_COLUMNS, EmpID="E3", FirstName="Ada", LastName="Birchall", StaffLevel="STF",
        Inactive="T", JobTitle="Bookkeeper", Rate1="60.00", Rate10="45.00"),
]

CLIENTS = [
    row(CLIENT_COLUMNS, ClientID="1001", Engagement="A", Name1="Pinecrest Joinery Ltd",
        Address1="220 Mill Road", City="Westmere", State="ON", ZIP="K0A 1C0", Country="Canada",
        AltAddress1="PO Box 19", AltCity="Westmere", AltState="ON", AltZIP="K0A 1C0",
        Phone="555-0101", Extension="12", Fax="555-0102", Email="office@pinecrest.example",
        FederalTaxID="123456782", YearEnd="2025-06-30", StateTaxID="ON-7781",
        Partner="Marion Quayle", Manager="Tobias Fenwick"),
    row(CLIENT_COLUMNS, ClientID="1001", Engagement="B", Name1="Pinecrest Joinery Ltd (payroll)",
        Address1="220 Mill Road", City="Westmere", State="ON", ZIP="K0A 1C0"),
    row(CLIENT_COLUMNS, ClientID="1002", Engagement="A", Name1="Harlow & Voss LLP",
        Address1="8 Quay Street", City="Port Edda", State="NS", ZIP="B0J 2E0",
        Phone="555-0111", Email="info@harlowvoss.example", FederalTaxID="987654321"),
    row(CLIENT_COLUMNS, ClientID="1003", Engagement="A", Name1="Tern Bay Dental Partners",
        Address1="41 Shore Lane", City="Port Edda", State="NS", ZIP="B0J 2E1"),
    row(CLIENT_COLUMNS, ClientID="2001", Engagement="A", Name1="Ingrid Solberg",
        Address1="3 Aspen Court", City="Westmere", State="ON", ZIP="K0A 1D0",
        AltAddress1="77 Cedar Hill", AltCity="Lorne", AltState="ON", AltZIP="K0B 1A0",
        Phone="555-0120", Email="ingrid.solberg@mailbox.example"),
    row(CLIENT_COLUMNS, ClientID="2002", Engagement="A", Name1="Declan Ashby",
        Phone="555-0121", Extension="4"),
]

CONTACTS = [
    row(CONTACT_COLUMNS, ContactGUID="{C-0001}", ClientID="1001", Engagement="A",
        FirstName="Nils", LastName="Pinecrest", Phone="555-0103", JobTitle="Owner",
        Email="nils@pinecrest.example"),
    row(CONTACT_COLUMNS, ContactGUID="{C-0002}", ClientID="1001", Engagement="A",
        FirstName="Greta", MiddleName="M", LastName="Oakes", JobTitle="Office manager"),
    row(CONTACT_COLUMNS, ContactGUID="{C-0003}", ClientID="1002", Engagement="A",
        FirstName="Ruth", LastName="Harlow", Email="ruth@harlowvoss.example"),
]

WIP = [
    row(WIP_COLUMNS, ReferenceNumber="W1", ClientID="1001", Engagement="A", EmpID="E1",
        Hours=2.5, TranDate=stamp(2026, 1, 12), WorkCode="BK", Description="January books",
        AdjAmount="450.00", BillingStatus="U"),
    row(WIP_COLUMNS, ReferenceNumber="W2", ClientID="1001", Engagement="B", EmpID="E2",
        Hours=1.0, TranDate=stamp(2026, 1, 20), WorkCode="BK", AdjAmount="95.00",
        BillingStatus="I"),
    row(WIP_COLUMNS, ReferenceNumber="W3", ClientID="2001", Engagement="A", EmpID="E2",
        Hours=1.5, TranDate=stamp(2026, 2, 3), WorkCode="T1", Name="Return review",
        AdjAmount="142.50", BillingStatus="M"),
    row(WIP_COLUMNS, ReferenceNumber="W4", ClientID="1002", Engagement="A", EmpID="E1",
        Hours=3.0, TranDate=stamp(2026, 2, 10), WorkCode="FS", AdjAmount="540.00",
        BillingStatus="B"),
    row(WIP_COLUMNS, ReferenceNumber="W5", ClientID="1002", Engagement="A", EmpID="E3",
        Hours=0.5, TranDate=stamp(2026, 2, 11), WorkCode="FS", AdjAmount="30.00",
        BillingStatus="R"),
    row(WIP_COLUMNS, ReferenceNumber="W6", ClientID="2002", Engagement="A", EmpID="E3",
        Hours=0.25, TranDate=stamp(2026, 3, 1), WorkCode="T1", AdjAmount="15.00",
        BillingStatus="S"),
    row(WIP_COLUMNS, ReferenceNumber="W7", ClientID="1003", Engagement="A", EmpID="E1",
        Hours=1.0, TranDate=stamp(2026, 3, 2), WorkCode="T2", AdjAmount="180.00",
        BillingStatus="X"),
]

AR = [
    row(AR_COLUMNS, ReferenceNumber="A1", ClientID="1001", Engagement="A", InvoiceNumber="INV-101",
        InvoiceDate=stamp(2026, 1, 31), FinalBillAmt="450.00", Tax1="58.50"),
    row(AR_COLUMNS, ReferenceNumber="A2", ClientID="1002", Engagement="A", InvoiceNumber="INV-102",
        InvoiceDate=stamp(2026, 2, 28), FinalBillAmt="540.00", Tax1="70.20"),
    row(AR_COLUMNS, ReferenceNumber="A3", ClientID="2001", Engagement="A", InvoiceNumber="INV-103",
        InvoiceDate=stamp(2026, 2, 28), FinalBillAmt="142.50"),
    row(AR_COLUMNS, ReferenceNumber="A4", ClientID="2002", Engagement="A", InvoiceNumber="INV-104",
        InvoiceDate=stamp(2026, 3, 5), FinalBillAmt="0"),
]

CASH = [
    # Pays INV-101 in full.
    row(CASH_COLUMNS, ReferenceNumber="C1", ARReference="A1", ClientID="1001", Engagement="A",
        CheckNumber="3301", DateReceived=stamp(2026, 2, 10), DatePosted=stamp(2026, 2, 11),
        DateApplied=stamp(2026, 2, 11), Reversed="N", OriginalAmount="508.50",
        Description="Cheque 3301", InternalMemo="Paid on delivery"),
    # Pays part of INV-102.
    row(CASH_COLUMNS, ReferenceNumber="C2", ARReference="A2", ClientID="1002", Engagement="A",
        CheckNumber="118", DateReceived=stamp(2026, 3, 10), DatePosted=stamp(2026, 3, 10),
        DateApplied=stamp(2026, 3, 10), Reversed="n", OriginalAmount="300.00"),
    # Overpays INV-103.
    row(CASH_COLUMNS, ReferenceNumber="C3", ARReference="A3", ClientID="2001", Engagement="A",
        DateReceived=stamp(2026, 3, 12), DatePosted=stamp(2026, 3, 12),
        DateApplied=stamp(2026, 3, 12), Reversed="N", OriginalAmount="200.00"),
    # A reversed cheque against INV-102 pays nothing.
    row(CASH_COLUMNS, ReferenceNumber="C4", ARReference="A2", ClientID="1002", Engagement="A",
        CheckNumber="119", DateReceived=stamp(2026, 3, 15), DatePosted=stamp(2026, 3, 15),
        DateApplied=stamp(2026, 3, 15), Reversed="R", OriginalAmount="240.20"),
]


def write_reference_data(db):
    insert(db, "Firm", ["FirmID", "Name"], [("QLX-2291", "Quayle Ledger Services")])
    insert(db, "Staff", STAFF_COLUMNS, STAFF)
    insert(db, "Category", ["Category", "Name"], CATEGORIES)
    insert(db, "WorkCode", ["Workcode", "Name", "CategoryID", "Chargeable"], WORK_CODES)
    insert(db, "BillCode", ["BillID", "Name", "EnglishMemo", "DefaultAmount"], BILL_CODES)


def write_fixed(db):
    write_reference_data(db)
    insert(db, "Client", CLIENT_COLUMNS, CLIENTS)
    insert(db, "CONTACT", CONTACT_COLUMNS, CONTACTS)
    insert(db, "WIP", WIP_COLUMNS, WIP)
    insert(db, "AR", AR_COLUMNS, AR)
    insert(db, "CASH", CASH_COLUMNS, CASH)


# ---------------------------------------------------------------------------------------
# Generated data.

FIRST = ["Alma", "Bram", "Cora", "Dag", "Elin", "Finn", "Gwen", "Hal", "Ines", "Jory"]
LAST = ["Ashcombe", "Brindle", "Corran", "Dunmore", "Elsworth", "Fallow", "Garrick", "Hobb"]
TRADES = ["Joinery", "Bakery", "Marine", "Dental", "Orchards", "Freight", "Print", "Tooling"]
FORMS = [" Ltd", " Inc", " LLP", " Partners", ""]


def write_generated(db, rng, clients, wip_rows, ar_rows, cash_rows):
    write_reference_data(db)
    keys = []
    rows = []
    for n in range(clients):
        client_id = str(10000 + n)
        engagement = rng.choice(["A", "A", "A", "B"])
        if rng.random() < 0.5:
            name = rng.choice(LAST) + " " + rng.choice(TRADES) + rng.choice(FORMS)
        else:
            name = rng.choice(FIRST) + " " + rng.choice(LAST)
        keys.append((client_id, engagement))
        rows.append(row(CLIENT_COLUMNS, ClientID=client_id, Engagement=engagement, Name1=name,
                        City="Westmere", State="ON", Phone="555-%04d" % rng.randrange(10000)))
    insert(db, "Client", CLIENT_COLUMNS, rows)
    if not keys:
        return
    wip, ar, cash = [], [], []
    for n in range(max(wip_rows, ar_rows, cash_rows)):
        client_id, engagement = rng.choice(keys)
        day = stamp(2025 + rng.randrange(2), rng.randrange(1, 13), rng.randrange(1, 29))
        hours = rng.choice([0.25, 0.5, 1.0, 1.5, 2.0])
        wip.append(row(WIP_COLUMNS, ReferenceNumber="W%d" % n, ClientID=client_id,
                       Engagement=engagement, EmpID=rng.choice(["E1", "E2", "E3"]), Hours=hours,
                       TranDate=day, WorkCode=rng.choice(WORK_CODES)[0],
                       AdjAmount="%.2f" % (hours * 95), BillingStatus=rng.choice("UIMXBRS")))
        amount = rng.randrange(50, 3000)
        ar.append(row(AR_COLUMNS, ReferenceNumber="A%d" % n, ClientID=client_id,
                      Engagement=engagement, InvoiceNumber="INV-%05d" % n, InvoiceDate=day,
                      FinalBillAmt="%.2f" % amount, Tax1="%.2f" % (amount * 0.13)))
        cash.append(row(CASH_COLUMNS, ReferenceNumber="C%d" % n, ARReference="A%d" % n,
                        ClientID=client_id, Engagement=engagement, DateReceived=day,
                        DatePosted=day, DateApplied=day, Reversed=rng.choice("NNNR"),
                        OriginalAmount="%.2f" % (amount * rng.choice([0.5, 1.13, 1.2]))))
    insert(db, "WIP", WIP_COLUMNS, wip[:wip_rows])
    insert(db, "AR", AR_COLUMNS, ar[:ar_rows])
    insert(db, "CASH", CASH_COLUMNS, cash[:cash_rows])


def main(argv):
    parser = argparse.ArgumentParser(description="Build a fictional CCH Practice export database.")
    parser.add_argument("output", help="path of the SQLite file to write (replaced if present)")
    parser.add_argument("--clients", type=int, help="number of generated clients")
    parser.add_argument("--entries", type=int, help="number of generated WIP, AR and CASH rows")
    parser.add_argument("--wip", type=int, help="number of generated WIP rows (else --entries)")
    parser.add_argument("--invoices", type=int, help="number of generated AR rows (else --entries)")
    parser.add_argument("--deposits", type=int,
                        help="number of generated CASH rows (else --entries)")
    parser.add_argument("--seed", type=int, default=1, help="seed of the generated data")
    args = parser.parse_args(argv)

    sizes = [args.clients, args.entries, args.wip, args.invoices, args.deposits]
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
                entries = args.entries or 0
                counts = [entries if n is None else n
                          for n in (args.wip, args.invoices, args.deposits)]
                write_generated(db, random.Random(args.seed), args.clients or 0, *counts)
    finally:
        db.close()
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
