#!/usr/bin/env python3
"""Builds a fictional Bill4Time export database (SQLite) for trying the Bill4Time sync.

Without size options it writes a small fixed sample that covers the cases the sync has to
tell apart: active, inactive and deleted clients (a deleted client is never brought in), a
company with " LLP" in its name, persons, contacts of a business client (one deleted), time
entries of several users at several rates, ready for billing, pending a ticket close or
already billed (an entry may name the invoice that bills it), and invoices that are paid
("PAID") or not. With --clients or --entries it generates that many clients and time entries
(and an invoice for every fourth entry, which that entry names) from --seed instead. Every name, number and address is made up.

Tables and columns are the ones the sync reads, blanks in names included. Dates are stored as
text "YYYY-MM-DD HH:MM:SS"; yes/no columns as 1 and 0.

    samples/make_bill4time_export.py samples/bill4time_export.db
    samples/make_bill4time_export.py /tmp/big_b4t.db --clients 2000 --entries 20000 --seed 7
"""

import argparse
import os
import random
import sqlite3
import sys

SCHEMA = """
CREATE TABLE Clients (
  "Client Id" INTEGER PRIMARY KEY, "Client Name" TEXT, "Client Status" TEXT,
  "Account Mgr" TEXT, "Address Line 1" TEXT, "Address Line 2" TEXT, "Address Line 3" TEXT,
  City TEXT, State TEXT, "Postal Code" TEXT, Country TEXT, Phone TEXT, Fax TEXT, Email TEXT,
  "Mobile Phone" TEXT);
CREATE TABLE Contacts (
  "Contact Id" INTEGER PRIMARY KEY, "Client Id" INTEGER, Status TEXT, "First Name" TEXT,
  MI TEXT, "Last Name" TEXT, "Full Name" TEXT, "Address Line 1" TEXT, "Address Line 2" TEXT,
  "Address Line 3" TEXT, City TEXT, State TEXT, PostalCode TEXT, Country TEXT, Phone TEXT,
  "Home Phone" TEXT, Mobile TEXT, Fax TEXT, Department TEXT, Email TEXT, "Alt Email" TEXT);
CREATE TABLE Invoices (
  "Invoice Id" INTEGER PRIMARY KEY, "Client Id" INTEGER, "Invoice Date" DATETIME,
  "Invoice Labor Total" TEXT, "Invoice Expense Total" TEXT, "Invoice Discount Amount" TEXT,
  "Invoice Total" TEXT, "Paid Status" TEXT);
CREATE TABLE TimeEntries (
  "Entry ID" INTEGER PRIMARY KEY, "Client Id" INTEGER, User TEXT, "User Id" INTEGER,
  Activity TEXT, "Internal Description" TEXT, "Public Description" TEXT, Billable INTEGER,
  "Entry Date" DATETIME, "Start Time" TEXT, "Labor Hours" REAL, "Billable Hours" REAL,
  Rate REAL, Status TEXT, "Invoice Id" INTEGER);
"""

CLIENT_COLUMNS = [
    "Client Id", "Client Name", "Client Status", "Account Mgr", "Address Line 1",
    "Address Line 2", "Address Line 3", "City", "State", "Postal Code", "Country", "Phone",
    "Fax", "Email", "Mobile Phone"]
CONTACT_COLUMNS = [
    "Contact Id", "Client Id", "Status", "First Name", "MI", "Last Name", "Full Name",
    "Address Line 1", "Address Line 2", "Address Line 3", "City", "State", "PostalCode",
    "Country", "Phone", "Home Phone", "Mobile", "Fax", "Department", "Email", "Alt Email"]
INVOICE_COLUMNS = [
    "Invoice Id", "Client Id", "Invoice Date", "Invoice Labor Total", "Invoice Expense Total",
    "Invoice Discount Amount", "Invoice Total", "Paid Status"]
ENTRY_COLUMNS = [
    "Entry ID", "Client Id", "User", "User Id", "Activity", "Internal Description",
    "Public Description", "Billable", "Entry Date", "Start Time", "Labor Hours",
    "Billable Hours", "Rate", "Status", "Invoice Id"]

READY = "Ready For Billing"
PENDING = "Pending Ticket Close"
BILLED = "Billed"


def stamp(year, month, day, hour=0, minute=0):
    return "%04d-%02d-%02d %02d:%02d:00" % (year, month, day, hour, minute)


def row(columns, **values):
    return tuple(values.get(c.replace(" ", "_"), values.get(c)) for c in columns)


def insert(db, table, columns, rows):
    marks = ", ".join("?" for _ in columns)
    names = ", ".join('"%s"' % c for c in columns)
    db.executemany("INSERT INTO %s (%s) VALUES (%s)" % (table, names, marks), rows)


# ---------------------------------------------------------------------------------------
# The fixed sample.

CLIENTS = [
    row(CLIENT_COLUMNS, Client_Id=101, Client_Name="Pinecrest Joinery Ltd",
        Client_Status="ACTIVE", Account_Mgr="Tobias Fenwick", Address_Line_1="220 Mill Road",
        Address_Line_2="Unit 4", City="Westmere", State="ON", Postal_Code="K0A 1C0",
        Country="Canada", Phone="555-0101", Fax="555-0102", Email="office@pinecrest.example",
        Mobile_Phone="555-0190"),
    row(CLIENT_COLUMNS, Client_Id=102, Client_Name="Harlow & Voss LLP", Client_Status="ACTIVE",
        Address_Line_1="8 Quay Street", City="Port Edda", State="NS", Postal_Code="B0J 2E0",
        Email="info@harlowvoss.example"),
    row(CLIENT_COLUMNS, Client_Id=103, Client_Name="Gullwing Charters Inc",
        Client_Status="Deleted", Address_Line_1="1 Pier Road", City="Port Edda", State="NS"),
    row(CLIENT_COLUMNS, Client_Id=104, Client_Name="Ingrid Solberg", Client_Status="ACTIVE",
        Address_Line_1="3 Aspen Court", City="Westmere", State="ON", Postal_Code="K0A 1D0",
        Phone="555-0120", Mobile_Phone="555-0121", Email="ingrid.solberg@mailbox.example"),
    row(CLIENT_COLUMNS, Client_Id=105, Client_Name="Declan Ashby", Client_Status="INACTIVE",
        Address_Line_1="9 Birch Lane", City="Lorne", State="ON", Postal_Code="K0B 1A1"),
]

CONTACTS = [
    row(CONTACT_COLUMNS, Contact_Id=1, Client_Id=101, Status="Active", First_Name="Petra",
        Last_Name="Lindqvist", Full_Name="Petra Lindqvist", Address_Line_1="12 Fir Street",
        City="Westmere", State="ON", PostalCode="K0A 1C2", Phone="555-0131",
        Department="Finance", Email="petra@pinecrest.example"),
    row(CONTACT_COLUMNS, Contact_Id=2, Client_Id=101, Status="Deleted", First_Name="Owen",
        Last_Name="Marsh", Full_Name="Owen Marsh"),
    row(CONTACT_COLUMNS, Contact_Id=3, Client_Id=102, Status="Active", First_Name="Greta",
        MI="L", Last_Name="Voss", Full_Name="Greta L. Voss", Mobile="555-0141",
        Alt_Email="greta.voss@mailbox.example"),
]

ENTRIES = [
    row(ENTRY_COLUMNS, Entry_ID=1, Client_Id=101, User="Marion Quayle", User_Id=7,
        Activity="Bookkeeping", Public_Description="Monthly reconciliation", Billable=1,
        Entry_Date=stamp(2026, 1, 12), Start_Time="9:00 AM", Labor_Hours=2.5,
        Billable_Hours=2.5, Rate=180.0, Status=READY),
    row(ENTRY_COLUMNS, Entry_ID=2, Client_Id=101, User="Marion Quayle", User_Id=7,
        Activity="Payroll", Public_Description="Payroll run", Billable=1,
        Entry_Date=stamp(2026, 1, 14), Start_Time="10:30 AM", Labor_Hours=1,
        Billable_Hours=1, Rate=180.0, Status=READY),
    row(ENTRY_COLUMNS, Entry_ID=3, Client_Id=102, User="Marion Quayle", User_Id=7,
        Activity="Advice", Internal_Description="Call about restructuring", Billable=1,
        Entry_Date=stamp(2026, 1, 15), Start_Time="2:00 PM", Labor_Hours=0.5,
        Billable_Hours=0.5, Rate=150.0, Status=PENDING, Invoice_Id=5002),
    row(ENTRY_COLUMNS, Entry_ID=4, Client_Id=104, User="Tobias Fenwick", User_Id=8,
        Activity="Personal return", Billable=1, Entry_Date=stamp(2026, 2, 3),
        Start_Time="11:00 AM", Labor_Hours=1.5, Billable_Hours=1, Rate=95.0, Status=READY),
    row(ENTRY_COLUMNS, Entry_ID=5, Client_Id=104, User="Tobias Fenwick", User_Id=8,
        Activity="Filing", Billable=0, Entry_Date=stamp(2025, 12, 20), Start_Time="3:15 PM",
        Labor_Hours=0.25, Billable_Hours=0, Rate=0.0, Status=BILLED, Invoice_Id=5003),
    row(ENTRY_COLUMNS, Entry_ID=6, Client_Id=103, User="Tobias Fenwick", User_Id=8,
        Activity="Closing file", Billable=1, Entry_Date=stamp(2026, 1, 20),
        Start_Time="9:00 AM", Labor_Hours=1, Billable_Hours=1, Rate=95.0, Status=READY),
]

INVOICES = [
    row(INVOICE_COLUMNS, Invoice_Id=5001, Client_Id=101, Invoice_Date=stamp(2026, 1, 31),
        Invoice_Labor_Total="630.00", Invoice_Expense_Total="20.00",
        Invoice_Discount_Amount="50.00", Invoice_Total="678.00", Paid_Status="PAID"),
    row(INVOICE_COLUMNS, Invoice_Id=5002, Client_Id=102, Invoice_Date=stamp(2026, 2, 28),
        Invoice_Labor_Total="75.00", Invoice_Expense_Total="0", Invoice_Discount_Amount="0",
        Invoice_Total="84.75", Paid_Status="UNPAID"),
    row(INVOICE_COLUMNS, Invoice_Id=5003, Client_Id=104, Invoice_Date=stamp(2026, 3, 2),
        Invoice_Labor_Total="95.00", Invoice_Expense_Total="0", Invoice_Discount_Amount="0",
        Invoice_Total="95.00", Paid_Status="PAID"),
]


def fixed_sample(db):
    insert(db, "Clients", CLIENT_COLUMNS, CLIENTS)
    insert(db, "Contacts", CONTACT_COLUMNS, CONTACTS)
    insert(db, "TimeEntries", ENTRY_COLUMNS, ENTRIES)
    insert(db, "Invoices", INVOICE_COLUMNS, INVOICES)


# ---------------------------------------------------------------------------------------
# A generated export of a chosen size.

FIRST = ["Ava", "Ben", "Cora", "Dev", "Elin", "Finn", "Gus", "Hana", "Ivo", "Jun", "Kai", "Lena"]
LAST = ["Abbott", "Birch", "Cole", "Dunmore", "Ellery", "Frost", "Gale", "Hollis", "Ives"]
TRADES = ["Joinery", "Dental", "Bakery", "Marine", "Orchard", "Print", "Freight", "Studio"]
FORMS = ["Ltd", "Inc", "LLP", "Co"]
USERS = [(7, "Marion Quayle", [180.0, 150.0]), (8, "Tobias Fenwick", [95.0]),
         (9, "Ada Birchall", [60.0, 45.0])]


def generated_sample(db, clients, entries, seed):
    rnd = random.Random(seed)
    rows = []
    for i in range(1, clients + 1):
        business = rnd.random() < 0.6
        name = ("%s %s %s" % (rnd.choice(LAST), rnd.choice(TRADES), rnd.choice(FORMS))
                if business else "%s %s" % (rnd.choice(FIRST), rnd.choice(LAST)))
        rows.append(row(CLIENT_COLUMNS, Client_Id=i, Client_Name=name,
                        Client_Status=rnd.choice(["ACTIVE"] * 8 + ["INACTIVE", "Deleted"]),
                        Address_Line_1="%d Main Street" % rnd.randint(1, 999), City="Westmere",
                        State="ON", Postal_Code="K0A 1C0", Email="client%d@example.test" % i))
    insert(db, "Clients", CLIENT_COLUMNS, rows)
    entry_rows, invoices = [], []
    for i in range(1, entries + 1):
        user, name, rates = rnd.choice(USERS)
        hours = round(rnd.uniform(0.25, 6), 2)
        client = rnd.randint(1, clients)
        entry_rows.append(row(ENTRY_COLUMNS, Entry_ID=i, Client_Id=client, User=name,
                              User_Id=user, Activity=rnd.choice(TRADES), Billable=1,
                              Entry_Date=stamp(2026, rnd.randint(1, 12), rnd.randint(1, 28)),
                              Start_Time="%d:00 AM" % rnd.randint(8, 11), Labor_Hours=hours,
                              Billable_Hours=hours, Rate=rnd.choice(rates),
                              Status=rnd.choice([READY, READY, PENDING, BILLED]),
                              Invoice_Id=i if i % 4 == 0 else None))
        if i % 4 == 0:
            total = round(rnd.uniform(100, 3000), 2)
            invoices.append(row(INVOICE_COLUMNS, Invoice_Id=i, Client_Id=client,
                                Invoice_Date=stamp(2026, rnd.randint(1, 12), rnd.randint(1, 28)),
                                Invoice_Labor_Total="%.2f" % total, Invoice_Expense_Total="0",
                                Invoice_Discount_Amount="0", Invoice_Total="%.2f" % total,
                                Paid_Status=rnd.choice(["PAID", "UNPAID"])))
    insert(db, "TimeEntries", ENTRY_COLUMNS, entry_rows)
    insert(db, "Invoices", INVOICE_COLUMNS, invoices)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("path")
    parser.add_argument("--clients", type=int)
    parser.add_argument("--entries", type=int)
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    if os.path.exists(args.path):
        os.remove(args.path)
    db = sqlite3.connect(args.path)
    db.executescript(SCHEMA)
    if args.clients or args.entries:
        generated_sample(db, args.clients or 100, args.entries or 1000, args.seed)
    else:
        fixed_sample(db)
    db.commit()
    db.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
