#!/usr/bin/env python3
"""Builds a fictional TPS export database (SQLite) for trying and benchmarking the TPS sync.

Without size options it writes a small fixed sample: a dozen clients that cover the cases
the sync has to tell apart (companies with " LTD", " LLP" and "Inc.", persons, a couple,
inactive clients, clients with a SIN or business numbers with program suffixes, several
phones and e-mail addresses), staff, work codes with parents, invoice paragraphs, invoices
with payments (money kept as text, as the export keeps it, including "($12.50)"), invoice
ID 1, and billed and unbilled time. With --clients, --times, --invoices or --payments it
generates that many rows from --seed instead. Every name, number and address is made up.

Tables and columns are the ones the sync reads. Dates are stored as text
"YYYY-MM-DD HH:MM:SS" and booleans as 1/0.

    samples/make_tps_export.py samples/tps_export.db
    samples/make_tps_export.py /tmp/big.db --clients 5000 --times 50000 \
        --invoices 10000 --payments 10000 --seed 7
"""

import argparse
import datetime
import os
import random
import sqlite3
import sys

SCHEMA = """
CREATE TABLE Firm (
  FirmID INTEGER PRIMARY KEY, Name TEXT, Active BOOLEAN);
CREATE TABLE Employees (
  EmployeeID INTEGER PRIMARY KEY, ContactID INTEGER, EmployeeType TEXT, LoginName TEXT,
  Status INTEGER, SIN TEXT);
CREATE TABLE Contacts (
  ContactID INTEGER PRIMARY KEY, autContactID INTEGER, strContactFirst TEXT,
  strContactLast TEXT, Title TEXT, FirstName TEXT, MiddleName TEXT, LastName TEXT,
  NickName TEXT, HomeTelephoneNumber TEXT, MobileTelephoneNumber TEXT,
  HomeAddressStreet TEXT, HomeAddressCity TEXT, HomeAddressState TEXT,
  HomeAddressPostalCode TEXT, HomeAddressCountry TEXT, WebPage TEXT, Birthday TEXT,
  JobTitle TEXT, CompanyName TEXT, Department TEXT, OfficeLocation TEXT,
  BusinessTelephoneNumber TEXT, BusinessFaxNumber TEXT, Email1Address TEXT,
  Email2Address TEXT, Email3Address TEXT, Profession TEXT, OtherAddressStreet TEXT,
  OtherAddressCity TEXT, OtherAddressState TEXT, OtherAddressPostalCode TEXT,
  OtherAddressCountry TEXT);
CREATE TABLE Clients (
  ClientID INTEGER PRIMARY KEY, Name TEXT, PrintAs TEXT, Title TEXT, FirstName TEXT,
  First TEXT, Industry TEXT, ClientCode TEXT,
  Street1 TEXT, City1 TEXT, State1 TEXT, Zip1 TEXT, Country1 TEXT,
  Street2 TEXT, City2 TEXT, State2 TEXT, Zip2 TEXT, Country2 TEXT,
  AreaCode1 TEXT, Phone1 TEXT, Ext1 TEXT, AreaCode2 TEXT, Phone2 TEXT, Ext2 TEXT,
  AreaCodeFax TEXT, Fax TEXT, ExtFax TEXT, AreaCode3 TEXT, Phone3 TEXT, Ext3 TEXT,
  AreaCode4 TEXT, Phone4 TEXT, Ext4 TEXT, Email TEXT, Email2 TEXT, WebPage TEXT,
  SIN TEXT, BusinessNum TEXT, CorporationNum TEXT, YearEnd TEXT, ProvTaxNum TEXT,
  InActive BOOLEAN, OtherNum TEXT, Prospect BOOLEAN);
CREATE TABLE ClientContacts (
  ClientID INTEGER, ContactID INTEGER, "Primary" BOOLEAN);
CREATE TABLE WorkCodes (
  WorkID INTEGER PRIMARY KEY, Name TEXT, Parent INTEGER);
CREATE TABLE Paragraphs (
  ParagraphID INTEGER PRIMARY KEY, ParCode TEXT, Description TEXT);
CREATE TABLE Invoices (
  InvoiceID INTEGER PRIMARY KEY, ClientID INTEGER, InvoiceNum TEXT, BillDate DATETIME,
  Amount TEXT, Tax1 TEXT, Tax2 TEXT, Tax3 TEXT);
CREATE TABLE Payments (
  PaymentID INTEGER PRIMARY KEY, PayDate DATETIME, ClientID INTEGER, InvoiceID INTEGER,
  Amount TEXT, Description TEXT);
CREATE TABLE Times (
  TimeID INTEGER PRIMARY KEY, ClientID INTEGER, EmployeeID INTEGER, Start DATETIME,
  Minute REAL, InvoiceID INTEGER, Status INTEGER, WorkID INTEGER, Description TEXT,
  Amount TEXT, Mark TEXT);
"""

CLIENT_COLUMNS = [
    "ClientID", "Name", "PrintAs", "Title", "FirstName", "First", "Industry", "ClientCode",
    "Street1", "City1", "State1", "Zip1", "Country1", "Street2", "City2", "State2", "Zip2",
    "Country2", "AreaCode1", "Phone1", "Ext1", "AreaCode2", "Phone2", "Ext2", "AreaCodeFax",
    "Fax", "ExtFax", "AreaCode3", "Phone3", "Ext3", "AreaCode4", "Phone4", "Ext4", "Email",
    "Email2", "WebPage", "SIN", "BusinessNum", "CorporationNum", "YearEnd", "ProvTaxNum",
    "InActive", "OtherNum", "Prospect",
]

CONTACT_COLUMNS = [
    "ContactID", "autContactID", "strContactFirst", "strContactLast", "Title", "FirstName",
    "MiddleName", "LastName", "NickName", "HomeTelephoneNumber", "MobileTelephoneNumber",
    "HomeAddressStreet", "HomeAddressCity", "HomeAddressState", "HomeAddressPostalCode",
    "HomeAddressCountry", "WebPage", "Birthday", "JobTitle", "CompanyName", "Department",
    "OfficeLocation", "BusinessTelephoneNumber", "BusinessFaxNumber", "Email1Address",
    "Email2Address", "Email3Address", "Profession", "OtherAddressStreet", "OtherAddressCity",
    "OtherAddressState", "OtherAddressPostalCode", "OtherAddressCountry",
]

TIME_COLUMNS = ["TimeID", "ClientID", "EmployeeID", "Start", "Minute", "InvoiceID", "Status",
                "WorkID", "Description", "Amount", "Mark"]


def stamp(year, month, day, hour=0, minute=0):
    return "%04d-%02d-%02d %02d:%02d:00" % (year, month, day, hour, minute)


def money(value):
    """Money as the export keeps it: "$1,234.50", negatives in parentheses."""
    text = "${:,.2f}".format(abs(value))
    return "(" + text + ")" if value < 0 else text


def insert(db, table, columns, rows):
    marks = ", ".join("?" for _ in columns)
    names = ", ".join('"%s"' % c for c in columns)
    db.executemany("INSERT INTO %s (%s) VALUES (%s)" % (table, names, marks), rows)


def client_row(**values):
    return tuple(values.get(c) for c in CLIENT_COLUMNS)


def contact_row(**values):
    values.setdefault("autContactID", values["ContactID"])
    values.setdefault("strContactFirst", values.get("FirstName"))
    values.setdefault("strContactLast", values.get("LastName"))
    return tuple(values.get(c) for c in CONTACT_COLUMNS)


# ---------------------------------------------------------------------------------------
# The fixed sample.

FIRMS = [(1, "Bayfield Old Books Bookkeeping", 0), (2, "Harrow & Quill Chartered Accountants", 1)]

WORK_CODES = [
    (1, "Accounting", None), (2, "Taxation", None), (3, "Advisory", None),
    (10, "Bookkeeping", 1), (11, "Financial statements", 1), (12, "T1 personal return", 2),
    (13, "T2 corporate return", 2), (14, "GST/HST return", 2), (15, "Business consulting", 3),
]

PARAGRAPHS = [
    (1, "BOOK", "Bookkeeping services for the period"),
    (2, "T1", "Preparation and filing of your personal income tax return"),
    (3, "T2", "Preparation of the corporate income tax return and schedules"),
    (4, "ADV", "Advice and meetings as discussed"),
]


def fixed_contacts():
    return [
        contact_row(ContactID=1, Title="Ms.", FirstName="Eleanor", LastName="Harrow",
                    NickName="Nell", JobTitle="Managing Partner",
                    CompanyName="Harrow & Quill Chartered Accountants",
                    BusinessTelephoneNumber="(613) 555-0101",
                    BusinessFaxNumber="(613) 555-0109", HomeTelephoneNumber="(613) 555-0141",
                    MobileTelephoneNumber="(613) 555-0151", HomeAddressStreet="12 Quarry Lane",
                    HomeAddressCity="Bayfield", HomeAddressState="ON",
                    HomeAddressPostalCode="K0A 1B0", HomeAddressCountry="Canada",
                    Birthday="1968-04-02 00:00:00", Email1Address="eleanor@harrowquill.example",
                    Email2Address="nell.harrow@mail.example", Profession="CPA"),
        contact_row(ContactID=2, Title="Mr.", FirstName="Tobias", MiddleName="J.",
                    LastName="Quill", JobTitle="Partner",
                    BusinessTelephoneNumber="(613) 555-0102",
                    Email1Address="tobias@harrowquill.example"),
        contact_row(ContactID=3, FirstName="Priya", LastName="Raman", JobTitle="Staff Accountant",
                    Email2Address="priya@harrowquill.example", Birthday="not known"),
        contact_row(ContactID=4, FirstName="Sam", LastName="Okafor",
                    Email3Address="sam.okafor@mail.example",
                    OtherAddressStreet="4 Mill Road", OtherAddressCity="Bayfield",
                    OtherAddressState="ON", OtherAddressPostalCode="K0A 1B0"),
        # Contacts of client companies.
        contact_row(ContactID=20, Title="Mr.", FirstName="Gordon", LastName="Pike",
                    JobTitle="President", CompanyName="Northwind Trading LTD",
                    BusinessTelephoneNumber="416 555 0120",
                    Email1Address="gordon@northwind.example",
                    Email2Address="gpike@mail.example", Email3Address="accounts@northwind.example"),
        contact_row(ContactID=21, FirstName="Lena", LastName="Marsh", JobTitle="Controller",
                    Department="Finance", OfficeLocation="Head office",
                    BusinessTelephoneNumber="416 555 0121", BusinessFaxNumber="416 555 0129",
                    Email2Address="lena@northwind.example"),
        contact_row(ContactID=22, FirstName="Arjun", LastName="Birch", JobTitle="Partner",
                    Email1Address="arjun@maplebirch.example"),
        contact_row(ContactID=23, FirstName="Colette", LastName="Dufresne",
                    MobileTelephoneNumber="514 555 0123"),
    ]


def fixed_clients():
    return [
        client_row(ClientID=101, Name="Northwind Trading LTD", Industry="Wholesale",
                   ClientCode="NOR001", Street1="200 Harbour Street, Suite 4", City1="Toronto",
                   State1="ON", Zip1="M5J 0A1", Country1="Canada", Street2="PO Box 77",
                   City2="Toronto", State2="ON", Zip2="M5J 0A2", AreaCode1="416",
                   Phone1="555-0120", Ext1="12", AreaCode2="416", Phone2="555-0122",
                   AreaCodeFax="416", Fax="555-0129", AreaCode3="647", Phone3="555-0130",
                   Ext3="3", Phone4="555-0131", Ext4="4", Email="info@northwind.example",
                   Email2="billing@northwind.example", WebPage="www.northwind.example",
                   BusinessNum="111222333", CorporationNum="1234567", YearEnd="2024-12-31",
                   ProvTaxNum="4455667", InActive=0, OtherNum="Lease 7", Prospect=0),
        client_row(ClientID=102, Name="Maple & Birch LLP", Industry="Legal",
                   ClientCode="MAP002", Street1="15 King Street West", City1="Ottawa",
                   State1="ON", Zip1="K1P 5N1", Country1="Canada", AreaCode1="613",
                   Phone1="555-0140", Email2="office@maplebirch.example",
                   BusinessNum="222333444 RT0001", InActive=0, Prospect=0),
        client_row(ClientID=103, Name="Harbourfront Inc.", ClientCode="HAR003",
                   Street1="9 Dockside Way", City1="Halifax", State1="NS", Zip1="B3J 0A3",
                   Country1="Canada", Phone1="555-0150", CorporationNum="7654321",
                   YearEnd="June 30, 2024", InActive=0, Prospect=0),
        client_row(ClientID=104, Name="Jane Smith", Title="Ms.", FirstName="Jane",
                   ClientCode="SMI004", Street1="48 Elm Avenue", City1="Kingston", State1="ON",
                   Zip1="K7L 1A1", Country1="Canada", Street2="Cottage 3, Lake Road",
                   City2="Sharbot Lake", State2="ON", Zip2="K0H 2P0", AreaCode1="613",
                   Phone1="555-0160", AreaCode2="613", Phone2="555-0161", AreaCode3="613",
                   Phone3="555-0162", AreaCode4="343", Phone4="555-0163",
                   Email="jane.smith@mail.example", Email2="jsmith@work.example",
                   SIN="900 100 104", InActive=0, Prospect=0),
        client_row(ClientID=105, Name="John & Mary Smith", FirstName="John & Mary",
                   ClientCode="SMI005", Street1="7 Orchard Crescent", City1="Kingston",
                   State1="ON", Zip1="K7M 2B2", Country1="Canada", AreaCode1="613",
                   Phone1="555-0170", Email="smithfamily@mail.example", SIN="900 100 105",
                   InActive=0, Prospect=0),
        client_row(ClientID=106, Name="Marco Rossi", FirstName="Marco", ClientCode="ROS006",
                   Street1="3 Vine Street", City1="Hamilton", State1="ON", Zip1="L8P 1A1",
                   Country1="Canada", Phone1="555-0180", Ext1="2",
                   Email2="marco.rossi@mail.example", InActive=0, Prospect=1),
        client_row(ClientID=107, Name="Lakeview Dental Office", ClientCode="LAK007",
                   Street1="1 Shore Road", City1="Barrie", State1="ON", Zip1="L4M 1A1",
                   Country1="Canada", AreaCode1="705", Phone1="555-0190", AreaCodeFax="705",
                   Fax="555-0199", InActive=1, Prospect=0),
        client_row(ClientID=108, Name="Peter O'Brien", Title="Mr.", FirstName="Peter",
                   ClientCode="OBR008", Street1="22 Hill Road", City1="Sudbury", State1="ON",
                   Zip1="P3A 1A1", Country1="Canada", AreaCode1="705", Phone1="555-0200",
                   SIN="900 100 108", InActive=1, Prospect=0),
        client_row(ClientID=109, Name="Greenfield Farms Co-operative", ClientCode="GRE009",
                   Street1="RR 2", City1="Guelph", State1="ON", Zip1="N1H 6H8",
                   Country1="Canada", Phone1="555-0210", ProvTaxNum="8899001", InActive=0,
                   Prospect=0),
        client_row(ClientID=110, Name="Alice Wong Optometry", PrintAs="Dr. Alice Wong",
                   FirstName="Alice", ClientCode="WON010", Street1="80 Main Street",
                   City1="Markham", State1="ON", Zip1="L3P 1X1", Country1="Canada",
                   AreaCode1="905", Phone1="555-0220", Email="office@wongoptometry.example",
                   BusinessNum="333444555RP0001", SIN="900 100 110", InActive=0, Prospect=0),
        client_row(ClientID=111, Name="Robert Chen", ClientCode="CHE011",
                   Street1="5 Birch Court", City1="Waterloo", State1="ON", Zip1="N2L 3G1",
                   Country1="Canada", Phone1="555-0230", InActive=0, Prospect=0),
        client_row(ClientID=112, Name="Sunrise Bakery Ltd,", First="Sunrise",
                   ClientCode="SUN012", Street1="61 Baker Street", City1="London", State1="ON",
                   Zip1="N6A 1A1", Country1="Canada", AreaCode1="519", Phone1="555-0240",
                   Email="orders@sunrisebakery.example", InActive=0, Prospect=1),
    ]


CLIENT_CONTACTS = [(101, 20, 1), (101, 21, 0), (102, 22, 1), (103, 23, 0)]

EMPLOYEES = [
    (1, 1, "Owner", "eharrow", 1, "900 200 001"),
    (2, 2, "partner", "tquill", 1, "900 200 002"),
    (3, 3, "Staff", "praman", 1, None),
    (4, 4, None, "sokafor", 0, None),
]


def fixed_invoices():
    # Invoice 1 is the export's own placeholder row, which the sync passes over.
    return [
        (1, 101, "0001", stamp(2024, 1, 2), "$0.00", "0", "0", "0"),
        (2, 101, "1002", stamp(2024, 3, 31), "$1,250.00", "$162.50", "0", None),
        (3, 102, "1003", stamp(2024, 4, 15), "800.00", "104.00", None, None),
        (4, 104, "1004", stamp(2024, 4, 30), "$350.00", "$45.50", "$0.00", "$0.00"),
        (5, 105, "1005", stamp(2024, 5, 10), "275", "35.75", None, None),
        (6, 112, "1006", stamp(2024, 6, 1), "$95.00", "$12.35", None, None),
        (7, 110, "1007", stamp(2024, 6, 20), "$1,000.00", "$130.00", "$5.00", None),
    ]


def fixed_payments():
    return [
        (1, stamp(2024, 4, 20), 101, 2, "$1,412.50", "Cheque 1044 - paid in full"),
        (2, stamp(2024, 5, 1), 102, 3, "$500.00", "  Partial payment  "),
        (3, stamp(2024, 5, 15), 104, 4, "$395.50", "E-transfer"),
        (4, stamp(2024, 5, 16), 104, 4, "($12.50)", "Courtesy discount"),
        (5, stamp(2024, 6, 2), 112, 6, "107.35", "Cash"),
        (6, stamp(2024, 6, 25), 110, 7, "no amount", "Payment slip unreadable"),
    ]


def fixed_times():
    rows = []
    entries = [
        # client, employee, start, minutes, invoice, status, work, description, amount, mark
        (101, 1, stamp(2024, 3, 4, 9, 0), 90, 2, 2, 10, "Monthly bookkeeping", "$150.00", None),
        (101, 3, stamp(2024, 3, 11, 13, 30), 240, 2, 2, 11, "Year-end statements", "$400.00",
         "(25.00)"),
        (102, 2, stamp(2024, 4, 2, 10, 0), 120, 3, 2, 15, "Partnership agreement review",
         "$300.00", None),
        (104, 3, stamp(2024, 4, 8, 14, 0), 60, 4, 2, 12, "T1 return 2023", "$120.00", "15"),
        (105, 3, stamp(2024, 4, 9, 9, 30), 75, 5, 2, 12, "Joint T1 returns", "$150.00", None),
        (106, 3, stamp(2024, 4, 22, 11, 0), 45, None, 0, 12, "T1 return 2023", "$90.00", None),
        (107, 4, stamp(2024, 5, 6, 15, 0), 30, None, 1, 14, "GST/HST quarterly return",
         "$60.00", None),
        (108, 3, stamp(2024, 5, 7, 9, 0), None, None, 0, 12, "Minutes not recorded", "$0.00",
         None),
        (109, 2, stamp(2024, 5, 13, 10, 0), 180, None, 0, 99, "Farm succession planning",
         "$450.00", None),
        (110, 1, stamp(2024, 6, 3, 8, 45), 150, 7, 2, 13, "T2 corporate return",
         "$375.00", None),
        (111, 3, stamp(2024, 6, 10, 16, 0), 30, None, 0, None, "Phone call about instalments",
         "$50.00", None),
        (112, 4, stamp(2024, 6, 17, 9, 0), 60, 6, 2, 10, "Bookkeeping catch-up", "$95.00",
         None),
        (None, 1, stamp(2024, 6, 18, 9, 0), 15, None, 0, None, "Unassigned firm time", None,
         None),
        (101, None, stamp(2024, 6, 19, 9, 0), 15, None, 0, 10, "Entry without staff", None,
         None),
    ]
    for time_id, e in enumerate(entries, start=1):
        rows.append((time_id,) + e)
    return rows


def write_fixed_reference_data(db):
    insert(db, "Firm", ["FirmID", "Name", "Active"], FIRMS)
    insert(db, "Contacts", CONTACT_COLUMNS, fixed_contacts())
    insert(db, "Employees",
           ["EmployeeID", "ContactID", "EmployeeType", "LoginName", "Status", "SIN"], EMPLOYEES)
    insert(db, "WorkCodes", ["WorkID", "Name", "Parent"], WORK_CODES)
    insert(db, "Paragraphs", ["ParagraphID", "ParCode", "Description"], PARAGRAPHS)


def write_fixed(db):
    write_fixed_reference_data(db)
    insert(db, "Clients", CLIENT_COLUMNS, fixed_clients())
    insert(db, "ClientContacts", ["ClientID", "ContactID", "Primary"], CLIENT_CONTACTS)
    insert(db, "Invoices", ["InvoiceID", "ClientID", "InvoiceNum", "BillDate", "Amount", "Tax1",
                            "Tax2", "Tax3"], fixed_invoices())
    insert(db, "Payments", ["PaymentID", "PayDate", "ClientID", "InvoiceID", "Amount",
                            "Description"], fixed_payments())
    insert(db, "Times", TIME_COLUMNS, fixed_times())


# ---------------------------------------------------------------------------------------
# Generated sizes.

FIRST_NAMES = ["Ada", "Bram", "Celia", "Dmitri", "Esme", "Farid", "Greta", "Hugo", "Ines",
               "Jonas", "Kira", "Lars", "Mina", "Nils", "Odette", "Pavel", "Quinn", "Rosa",
               "Soren", "Tamsin", "Ulla", "Viggo", "Wren", "Yusuf", "Zora"]
LAST_NAMES = ["Abernathy", "Bellweather", "Crowfoot", "Delacroix", "Everly", "Fairweather",
              "Grimsby", "Hollander", "Ironside", "Jessup", "Kettering", "Lockwood",
              "Merriweather", "Northcott", "Oakhurst", "Pemberton", "Quimby", "Ravenscroft",
              "Stillwater", "Thistlewood", "Underhill", "Vantongeren", "Whitlock", "Yardley"]
BUSINESS_WORDS = ["Alder", "Beacon", "Cedar", "Driftwood", "Ember", "Foxglove", "Granite",
                  "Heron", "Juniper", "Kestrel", "Lantern", "Meadow", "Nettle", "Osprey",
                  "Pinecone", "Quarry", "Riverbend", "Saltmarsh", "Tamarack", "Willow"]
BUSINESS_KINDS = ["Bakery", "Hardware", "Landscaping", "Studio", "Motors", "Holdings",
                  "Consulting", "Dental", "Farms", "Printing", "Outfitters", "Kitchens"]
BUSINESS_ENDINGS = [" LTD", " Ltd.", " LLP", " Inc.", " Corp", "", " Co."]
CITIES = [("Toronto", "ON", "M5V"), ("Ottawa", "ON", "K1P"), ("Halifax", "NS", "B3J"),
          ("Calgary", "AB", "T2P"), ("Winnipeg", "MB", "R3C"), ("Regina", "SK", "S4P"),
          ("Victoria", "BC", "V8W"), ("Moncton", "NB", "E1C")]


def generated_clients(rng, count):
    rows = []
    for i in range(count):
        client_id = 1000 + i
        city, prov, fsa = rng.choice(CITIES)
        kind = rng.random()
        values = dict(ClientID=client_id, ClientCode="C%05d" % i,
                      Street1="%d %s Street" % (rng.randint(1, 999), rng.choice(LAST_NAMES)),
                      City1=city, State1=prov, Zip1="%s %d%s%d" % (fsa, rng.randint(0, 9),
                                                                     rng.choice("ABCEGH"),
                                                                     rng.randint(0, 9)),
                      Country1="Canada", AreaCode1="555", Phone1="555-%04d" % (i % 10000),
                      InActive=1 if rng.random() < 0.08 else 0,
                      Prospect=1 if rng.random() < 0.05 else 0)
        first, last = rng.choice(FIRST_NAMES), rng.choice(LAST_NAMES)
        if kind < 0.45:
            name = "%s %s%s" % (rng.choice(BUSINESS_WORDS), rng.choice(BUSINESS_KINDS),
                                rng.choice(BUSINESS_ENDINGS))
            values.update(Name=name, Email="info%d@business.example" % i)
            numbers = rng.random()
            if numbers < 0.5:
                values["BusinessNum"] = "%09d%s" % (rng.randint(0, 999999999),
                                                    rng.choice(["", " RT0001", "RP0001"]))
            elif numbers < 0.7:
                values["CorporationNum"] = "%07d" % rng.randint(0, 9999999)
            elif numbers < 0.8:
                values["ProvTaxNum"] = "%07d" % rng.randint(0, 9999999)
            if rng.random() < 0.5:
                values["YearEnd"] = stamp(2024, rng.choice([3, 6, 9, 12]), 28)
        elif kind < 0.55:
            second = rng.choice(FIRST_NAMES)
            values.update(Name="%s & %s %s" % (first, second, last),
                          FirstName="%s & %s" % (first, second),
                          SIN="900 %03d %03d" % divmod(i % 1000000, 1000),
                          Email="%s.%s@mail.example" % (first.lower(), last.lower()))
        else:
            values.update(Name="%s %s" % (first, last), FirstName=first,
                          Email="%s%d@mail.example" % (first.lower(), i),
                          Email2="%s.%s@work.example" % (first.lower(), last.lower())
                          if rng.random() < 0.3 else None)
            if rng.random() < 0.8:
                values["SIN"] = "900 %03d %03d" % divmod(i % 1000000, 1000)
            if rng.random() < 0.3:
                values.update(AreaCode2="555", Phone2="555-%04d" % ((i + 1) % 10000))
        rows.append(client_row(**values))
    return rows


def write_generated(db, rng, clients, times, invoices, payments):
    write_fixed_reference_data(db)
    client_ids = [1000 + i for i in range(clients)]
    insert(db, "Clients", CLIENT_COLUMNS, generated_clients(rng, clients))
    child_codes = [w[0] for w in WORK_CODES if w[2] is not None]
    employee_ids = [e[0] for e in EMPLOYEES]

    start_day = datetime.date(2023, 1, 2)
    invoice_rows, invoice_client = [], {}
    for n in range(invoices):
        invoice_id = n + 1
        client = rng.choice(client_ids) if client_ids else None
        day = start_day + datetime.timedelta(days=rng.randint(0, 700))
        amount = round(rng.uniform(50, 5000), 2)
        invoice_rows.append((invoice_id, client, "%06d" % invoice_id,
                             stamp(day.year, day.month, day.day), money(amount),
                             money(round(amount * 0.13, 2)), "0", None))
        invoice_client[invoice_id] = (client, amount * 1.13, day)
    insert(db, "Invoices", ["InvoiceID", "ClientID", "InvoiceNum", "BillDate", "Amount", "Tax1",
                            "Tax2", "Tax3"], invoice_rows)

    payment_rows = []
    for n in range(payments):
        if invoice_client:
            invoice_id = rng.randint(1, invoices)
            client, total, day = invoice_client[invoice_id]
        else:
            client = rng.choice(client_ids) if client_ids else None
            invoice_id, total, day = None, 100.0, start_day
        paid_day = day + datetime.timedelta(days=rng.randint(0, 60))
        share = rng.choice([1.0, 1.0, 0.5, 0.25, -0.05])
        payment_rows.append((n + 1, stamp(paid_day.year, paid_day.month, paid_day.day), client,
                             invoice_id, money(round(total * share, 2)), "Payment %d" % (n + 1)))
    insert(db, "Payments", ["PaymentID", "PayDate", "ClientID", "InvoiceID", "Amount",
                            "Description"], payment_rows)

    time_rows = []
    for n in range(times):
        client = rng.choice(client_ids) if client_ids else None
        day = start_day + datetime.timedelta(days=rng.randint(0, 700))
        billed = invoices > 0 and rng.random() < 0.4
        minutes = rng.choice([15, 30, 45, 60, 90, 120, 180])
        time_rows.append((n + 1, client, rng.choice(employee_ids),
                          stamp(day.year, day.month, day.day, rng.randint(8, 16),
                                rng.choice([0, 15, 30, 45])),
                          minutes, rng.randint(1, invoices) if billed else None,
                          2 if billed else rng.choice([0, 1]), rng.choice(child_codes),
                          "Work session %d" % (n + 1), money(minutes * 2.0),
                          money(-5.0) if rng.random() < 0.02 else None))
    insert(db, "Times", TIME_COLUMNS, time_rows)


def main(argv):
    parser = argparse.ArgumentParser(description="Build a fictional TPS export database.")
    parser.add_argument("output", help="path of the SQLite file to write (replaced if present)")
    parser.add_argument("--clients", type=int, help="number of generated clients")
    parser.add_argument("--times", type=int, help="number of generated time entries")
    parser.add_argument("--invoices", type=int, help="number of generated invoices")
    parser.add_argument("--payments", type=int, help="number of generated payments")
    parser.add_argument("--seed", type=int, default=1, help="seed of the generated data")
    args = parser.parse_args(argv)

    sizes = [args.clients, args.times, args.invoices, args.payments]
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
