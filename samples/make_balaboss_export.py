#!/usr/bin/env python3
"""Builds a fictional Balaboss export database (SQLite) for trying the Balaboss sync.

Without size options it writes a small fixed sample that covers the cases the sync has to
tell apart: companies with " LLP" and " PARTNER" in their names, persons, a client whose
e-mail is held as a mail link ("#mailto:"), year ends written "Jun 30,  2025", contacts of a
business client with their address and telephone rows, key persons with up to four rates,
standard paragraphs, service categories, service codes billed by default or not, WIP rows,
invoices and their transactions (payments). With --clients or --entries it generates that
many clients and WIP, invoice and transaction rows from --seed instead. Every name, number and
address is made up.

Tables and columns are the ones the sync reads. Dates are stored as text
"YYYY-MM-DD HH:MM:SS"; yes/no columns as 1 and 0.

    samples/make_balaboss_export.py samples/balaboss_export.db
    samples/make_balaboss_export.py /tmp/big_balaboss.db --clients 2000 --entries 20000 --seed 7
"""

import argparse
import os
import random
import sqlite3
import sys

SCHEMA = """
CREATE TABLE tblKeyPerson (
  strKeyPersonCode TEXT PRIMARY KEY, strKPFirst TEXT, strKPLast TEXT, ysnCurrent INTEGER,
  curRate1 TEXT, curRate2 TEXT, curRate3 TEXT, curRate4 TEXT);
CREATE TABLE tblClient (
  autClientID INTEGER PRIMARY KEY, strClientNo TEXT, strCompany TEXT, strAlternate TEXT,
  strAddress TEXT, strCity TEXT, strProvState TEXT, strPostalCode TEXT, strPhoneNo TEXT,
  strFaxNo TEXT, strEMail TEXT, strKeyPerson1Code TEXT, strKeyPerson2Code TEXT,
  strYearEnd TEXT, ysnActive INTEGER, memPermNote TEXT);
CREATE TABLE tblContact (
  autContactID INTEGER PRIMARY KEY, lngClientID INTEGER, strContactFirst TEXT,
  strContactLast TEXT, strMx TEXT, strTitle TEXT);
CREATE TABLE tblContactAddress (
  autContactAddressID INTEGER PRIMARY KEY, lngContactID INTEGER, strAddress TEXT,
  strCity TEXT, strProvState TEXT, strPostalCode TEXT);
CREATE TABLE tblContactPhone (
  autContactPhoneID INTEGER PRIMARY KEY, lngContactID INTEGER, strPhoneNo TEXT);
CREATE TABLE tblTBSvcCategory (
  autSvcCategoryID INTEGER PRIMARY KEY, strSvcCategoryName TEXT);
CREATE TABLE tblTBSvcCode (
  autSvcCodeID INTEGER PRIMARY KEY, strSvcCode TEXT, strSvcCodeDescr TEXT,
  lngSvcCategoryID INTEGER, ysnDefaultBill INTEGER);
CREATE TABLE tblTBStdPara (
  autStdParaID INTEGER, memStdPara TEXT);
CREATE TABLE tblTBInv (
  autInvID INTEGER PRIMARY KEY, lngClientID INTEGER, strInvoiceNo TEXT, dtmInvDate DATETIME,
  curTotal TEXT, curTax1 TEXT);
CREATE TABLE tblTBTransType (
  autTBTransTypeID INTEGER PRIMARY KEY, strTransTypeDescr TEXT, strTransTypeDescr2 TEXT);
CREATE TABLE tblTBInvTrans (
  autInvTransID INTEGER, lngLineNo INTEGER, lngInvID INTEGER, memStdPara TEXT,
  dtmTrans DATETIME, lngTBTransTypeID INTEGER, curLeftCol TEXT, curRightCol TEXT,
  PRIMARY KEY (autInvTransID, lngLineNo));
CREATE TABLE tblTBWIP (
  autWIPID INTEGER PRIMARY KEY, lngClientID INTEGER, strKPCode TEXT, lngSvcCodeID INTEGER,
  curHoursQty TEXT, dtmTrans DATETIME, curAmount TEXT, memNote TEXT);
"""

CLIENT_COLUMNS = [
    "autClientID", "strClientNo", "strCompany", "strAlternate", "strAddress", "strCity",
    "strProvState", "strPostalCode", "strPhoneNo", "strFaxNo", "strEMail", "strKeyPerson1Code",
    "strKeyPerson2Code", "strYearEnd", "ysnActive", "memPermNote"]
KEY_PERSON_COLUMNS = [
    "strKeyPersonCode", "strKPFirst", "strKPLast", "ysnCurrent", "curRate1", "curRate2",
    "curRate3", "curRate4"]
CONTACT_COLUMNS = [
    "autContactID", "lngClientID", "strContactFirst", "strContactLast", "strMx", "strTitle"]
WIP_COLUMNS = [
    "autWIPID", "lngClientID", "strKPCode", "lngSvcCodeID", "curHoursQty", "dtmTrans",
    "curAmount", "memNote"]
INV_COLUMNS = ["autInvID", "lngClientID", "strInvoiceNo", "dtmInvDate", "curTotal", "curTax1"]
TRANS_COLUMNS = [
    "autInvTransID", "lngLineNo", "lngInvID", "memStdPara", "dtmTrans", "lngTBTransTypeID",
    "curLeftCol", "curRightCol"]


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

KEY_PERSONS = [
    row(KEY_PERSON_COLUMNS, strKeyPersonCode="MQ", strKPFirst="Marion", strKPLast="Quayle",
        ysnCurrent=1, curRate1="180.00", curRate2="150.00"),
    row(KEY_PERSON_COLUMNS, strKeyPersonCode="TF", strKPFirst="Tobias", strKPLast="Fenwick",
        ysnCurrent=1, curRate1="95.00"),
    row(KEY_PERSON_COLUMNS, strKeyPersonCode="AB", strKPFirst="Ada", strKPLast="Birchall",
        ysnCurrent=0, curRate1="60.00", curRate4="45.00"),
]

CLIENTS = [
    row(CLIENT_COLUMNS, autClientID=1, strClientNo="P-100", strCompany="Pinecrest Joinery Ltd",
        strAlternate="Pinecrest Joinery Limited", strAddress="220 Mill Road", strCity="Westmere",
        strProvState="ON", strPostalCode="K0A 1C0", strPhoneNo="555-0101", strFaxNo="555-0102",
        strEMail="office@pinecrest.example", strKeyPerson1Code="MQ", strKeyPerson2Code="TF",
        strYearEnd="Jun 30,  2025", ysnActive=1, memPermNote="Books kept on site."),
    row(CLIENT_COLUMNS, autClientID=2, strClientNo="H-200", strCompany="Harlow & Voss LLP",
        strAddress="8 Quay Street", strCity="Port Edda", strProvState="NS",
        strPostalCode="B0J 2E0", strEMail="#mailto:info@harlowvoss.example",
        strKeyPerson1Code="MQ", strYearEnd="Dec 31,  2025", ysnActive=1),
    row(CLIENT_COLUMNS, autClientID=3, strClientNo="T-300", strCompany="Tern Bay Dental Partners",
        strAddress="41 Shore Lane", strCity="Port Edda", strProvState="NS",
        strPostalCode="B0J 2E1", ysnActive=0),
    row(CLIENT_COLUMNS, autClientID=4, strClientNo="S-400", strCompany="Ingrid Solberg",
        strAddress="3 Aspen Court", strCity="Westmere", strProvState="ON",
        strPostalCode="K0A 1D0", strPhoneNo="555-0120",
        strEMail="ingrid.solberg@mailbox.example", ysnActive=1),
    row(CLIENT_COLUMNS, autClientID=5, strClientNo="A-500", strCompany="Declan Ashby",
        strAddress="9 Birch Lane", strCity="Lorne", strProvState="ON", strPostalCode="K0B 1A1",
        ysnActive=1),
]

CONTACTS = [
    row(CONTACT_COLUMNS, autContactID=11, lngClientID=1, strContactFirst="Petra",
        strContactLast="Lindqvist", strMx="Ms.", strTitle="Controller"),
    row(CONTACT_COLUMNS, autContactID=12, lngClientID=1, strContactFirst="Owen",
        strContactLast="Marsh", strMx="Mr.", strTitle="Owner"),
    row(CONTACT_COLUMNS, autContactID=21, lngClientID=2, strContactFirst="Greta",
        strContactLast="Voss", strTitle="Partner"),
]

CONTACT_ADDRESSES = [
    (1, 11, "12 Fir Street", "Westmere", "ON", "K0A 1C2"),
    (2, 21, "5 Harbour View", "Port Edda", "NS", "B0J 2E3"),
]
CONTACT_PHONES = [(1, 11, "555-0131"), (2, 12, "555-0132")]

CATEGORIES = [(1, "Accounting"), (2, "Taxation"), (3, "Administration")]
SERVICE_CODES = [
    (1, "BK", "Bookkeeping", 1, 1), (2, "FS", "Financial statements", 1, 1),
    (3, "T1", "Personal return", 2, 1), (4, "TRN", "Staff training", 3, 0),
]
PARAGRAPHS = [
    (1, "Bookkeeping services for the period"),
    (2, "Year-end financial statements and adjustments"),
]
TRANS_TYPES = [(1, "Payment", "Cheque"), (2, "Payment", "Transfer"), (3, "Credit", "Note")]

WIP = [
    row(WIP_COLUMNS, autWIPID=1, lngClientID=1, strKPCode="MQ", lngSvcCodeID=1,
        curHoursQty="2.5", dtmTrans=stamp(2026, 1, 12, 9), curAmount="450.00",
        memNote="Monthly reconciliation"),
    row(WIP_COLUMNS, autWIPID=2, lngClientID=2, strKPCode="TF", lngSvcCodeID=2,
        curHoursQty="4", dtmTrans=stamp(2026, 1, 15, 13, 30), curAmount="380.00"),
    row(WIP_COLUMNS, autWIPID=3, lngClientID=4, strKPCode="TF", lngSvcCodeID=3,
        curHoursQty="1", dtmTrans=stamp(2026, 2, 3, 10), curAmount="95.00",
        memNote="Return questions"),
]

INVOICES = [
    row(INV_COLUMNS, autInvID=1, lngClientID=1, strInvoiceNo="INV-1001",
        dtmInvDate=stamp(2026, 1, 31), curTotal="1000.00", curTax1="130.00"),
    row(INV_COLUMNS, autInvID=2, lngClientID=2, strInvoiceNo="INV-1002",
        dtmInvDate=stamp(2026, 2, 28), curTotal="400.00", curTax1="52.00"),
    row(INV_COLUMNS, autInvID=3, lngClientID=4, strInvoiceNo="INV-1003",
        dtmInvDate=stamp(2026, 3, 2), curTotal="95.00", curTax1="0"),
]

TRANSACTIONS = [
    row(TRANS_COLUMNS, autInvTransID=1, lngLineNo=1, lngInvID=1, memStdPara="Cheque 4471",
        dtmTrans=stamp(2026, 2, 10), lngTBTransTypeID=1, curLeftCol="0", curRightCol="1130.00"),
    row(TRANS_COLUMNS, autInvTransID=2, lngLineNo=1, lngInvID=2, memStdPara="Part payment",
        dtmTrans=stamp(2026, 3, 15), lngTBTransTypeID=2, curLeftCol="0", curRightCol="200.00"),
]


def fixed_sample(db):
    insert(db, "tblKeyPerson", KEY_PERSON_COLUMNS, KEY_PERSONS)
    insert(db, "tblClient", CLIENT_COLUMNS, CLIENTS)
    insert(db, "tblContact", CONTACT_COLUMNS, CONTACTS)
    db.executemany("INSERT INTO tblContactAddress VALUES (?, ?, ?, ?, ?, ?)", CONTACT_ADDRESSES)
    db.executemany("INSERT INTO tblContactPhone VALUES (?, ?, ?)", CONTACT_PHONES)
    db.executemany("INSERT INTO tblTBSvcCategory VALUES (?, ?)", CATEGORIES)
    db.executemany("INSERT INTO tblTBSvcCode VALUES (?, ?, ?, ?, ?)", SERVICE_CODES)
    db.executemany("INSERT INTO tblTBStdPara VALUES (?, ?)", PARAGRAPHS)
    db.executemany("INSERT INTO tblTBTransType VALUES (?, ?, ?)", TRANS_TYPES)
    insert(db, "tblTBWIP", WIP_COLUMNS, WIP)
    insert(db, "tblTBInv", INV_COLUMNS, INVOICES)
    insert(db, "tblTBInvTrans", TRANS_COLUMNS, TRANSACTIONS)


# ---------------------------------------------------------------------------------------
# A generated export of a chosen size.

FIRST = ["Ava", "Ben", "Cora", "Dev", "Elin", "Finn", "Gus", "Hana", "Ivo", "Jun", "Kai", "Lena"]
LAST = ["Abbott", "Birch", "Cole", "Dunmore", "Ellery", "Frost", "Gale", "Hollis", "Ives"]
TRADES = ["Joinery", "Dental", "Bakery", "Marine", "Orchard", "Print", "Freight", "Studio"]
FORMS = ["Ltd", "Inc", "LLP", "Partners", "Co"]


def generated_sample(db, clients, entries, seed):
    rnd = random.Random(seed)
    fixed_sample_staff = KEY_PERSONS
    insert(db, "tblKeyPerson", KEY_PERSON_COLUMNS, fixed_sample_staff)
    db.executemany("INSERT INTO tblTBSvcCategory VALUES (?, ?)", CATEGORIES)
    db.executemany("INSERT INTO tblTBSvcCode VALUES (?, ?, ?, ?, ?)", SERVICE_CODES)
    db.executemany("INSERT INTO tblTBStdPara VALUES (?, ?)", PARAGRAPHS)
    db.executemany("INSERT INTO tblTBTransType VALUES (?, ?, ?)", TRANS_TYPES)
    rows = []
    for i in range(1, clients + 1):
        business = rnd.random() < 0.6
        name = ("%s %s %s" % (rnd.choice(LAST), rnd.choice(TRADES), rnd.choice(FORMS))
                if business else "%s %s" % (rnd.choice(FIRST), rnd.choice(LAST)))
        rows.append(row(CLIENT_COLUMNS, autClientID=i, strClientNo="G-%05d" % i,
                        strCompany=name, strAddress="%d Main Street" % rnd.randint(1, 999),
                        strCity="Westmere", strProvState="ON", strPostalCode="K0A 1C0",
                        strEMail="client%d@example.test" % i,
                        strKeyPerson1Code=rnd.choice(["MQ", "TF", None]),
                        strYearEnd="Dec 31,  2025", ysnActive=1))
    insert(db, "tblClient", CLIENT_COLUMNS, rows)
    wip, invoices, trans = [], [], []
    for i in range(1, entries + 1):
        client = rnd.randint(1, clients)
        day = stamp(2026, rnd.randint(1, 12), rnd.randint(1, 28), rnd.randint(8, 17))
        wip.append(row(WIP_COLUMNS, autWIPID=i, lngClientID=client,
                       strKPCode=rnd.choice(["MQ", "TF", "AB"]), lngSvcCodeID=rnd.randint(1, 4),
                       curHoursQty="%.2f" % rnd.uniform(0.25, 6), dtmTrans=day,
                       curAmount="%.2f" % rnd.uniform(20, 900)))
        if i % 4 == 0:
            total = rnd.uniform(100, 3000)
            invoices.append(row(INV_COLUMNS, autInvID=i, lngClientID=client,
                                strInvoiceNo="G-INV-%06d" % i, dtmInvDate=day,
                                curTotal="%.2f" % total, curTax1="%.2f" % (total * 0.13)))
            trans.append(row(TRANS_COLUMNS, autInvTransID=i, lngLineNo=1, lngInvID=i,
                             dtmTrans=day, lngTBTransTypeID=1, curLeftCol="0",
                             curRightCol="%.2f" % (total * rnd.choice([0.5, 1.13]))))
    insert(db, "tblTBWIP", WIP_COLUMNS, wip)
    insert(db, "tblTBInv", INV_COLUMNS, invoices)
    insert(db, "tblTBInvTrans", TRANS_COLUMNS, trans)


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
