#!/usr/bin/env python3
"""Writes a folder of fictional Profile return files for the stand-in Profile product.

Each file is one return in the documented JSON form (tax/profile_return_file.hpp): "format",
"kind" ("T1" or "T2"), "year", an optional salted password hash, the primary client and, for
a couple, the second client, each a map from Profile field key to text.

Without size options it writes a small fixed folder that covers what the Profile imports have
to tell apart:
  - single taxpayers and couples (a second client with its own SIN) of 2014, 2015 and 2016;
  - Protected.16T, protected by the password "maple" (stored only as a salted hash);
  - InUse.16T, a plain return: with --hold-in-use SECONDS this script keeps it locked (in use
    by another user) that long after writing, as `lfimport profile-file lock` does;
  - Later.17T, a return of a year no Profile object opens;
  - sole proprietorships (form 2125) with further owners in the owners' table;
  - corporate returns (.GT2) of one business number with three year ends, and one more.
With --t1 or --t2 it generates that many returns from --seed instead (a quarter of the T1
returns couples). Every name, number and address is made up.

    samples/make_profile_returns.py /tmp/returns
    samples/make_profile_returns.py /tmp/many --t1 2000 --t2 500 --seed 7
"""

import argparse
import fcntl
import hashlib
import json
import os
import random
import sys
import time

FIRST = ["Ada", "Ben", "Chloe", "Dev", "Elena", "Farid", "Grace", "Hugo", "Iris", "Jonah",
         "Kiran", "Lena", "Marc", "Nadia", "Owen", "Priya", "Quinn", "Rosa", "Sam", "Tess"]
LAST = ["Abbott", "Birch", "Carver", "Dunmore", "Ellery", "Fenwick", "Garrow", "Hollis",
        "Ingram", "Jessop", "Kettering", "Lowther", "Marsh", "Norwood", "Oakes", "Pryor"]
STREETS = ["Maple Ave", "Lakeshore Rd", "Elm St", "Queen St W", "Harbour Dr", "Ridge Rd"]
CITIES = [("Toronto", "ON", "M4C 1B5"), ("Ottawa", "ON", "K1P 5G3"), ("Halifax", "NS", "B3H 1A1"),
          ("Calgary", "AB", "T2P 1J9"), ("Regina", "SK", "S4P 3Y2"), ("Victoria", "BC", "V8W 1P6")]
BUSINESS = ["Bakery", "Landscaping", "Bookkeeping", "Carpentry", "Photography", "Catering"]


def sin(rng):
    """A nine-digit number that passes the SIN check digit; it starts with 0, which no SIN is
    given out with, so none belongs to anybody."""
    digits = [0] + [rng.randint(0, 9) for _ in range(7)]
    total = 0
    for i, d in enumerate(digits):
        d = d * 2 if i % 2 else d
        total += d - 9 if d > 9 else d
    return "".join(map(str, digits)) + str((10 - total % 10) % 10)


def person(rng, prefix, last=None):
    city, prov, postal = rng.choice(CITIES)
    fields = {
        prefix + "Title": rng.choice(["Mr.", "Ms.", "Dr.", ""]),
        prefix + "LastName": last or rng.choice(LAST),
        prefix + "SIN": sin(rng),
        prefix + "Address": "%d %s" % (rng.randint(1, 999), rng.choice(STREETS)),
        prefix + "City": city,
        prefix + "Province": prov,
        prefix + "PostalCode": postal,
        prefix + "BirthDate": "%d-%02d-%02d" % (rng.randint(1940, 2000), rng.randint(1, 12),
                                                 rng.randint(1, 28)),
        prefix + "HomePhone": "(%d) 555-%04d" % (rng.choice([416, 613, 902]), rng.randint(0, 9999)),
    }
    # Intended: the spouse's first-name key has a small n, as Profile names it.
    fields[prefix + ("Firstname" if prefix == "Spouse" else "FirstName")] = rng.choice(FIRST)
    return {k: v for k, v in fields.items() if v}


def t1_client(rng, married):
    fields = person(rng, "Client")
    fields.update({
        "ClientGender": rng.choice(["1", "2"]),
        "ClientMaritalStatus": "1" if married else rng.choice(["4", "5", "6"]),
        "T1Info.B[24]": rng.choice(["0", "1"]),
        "T1Info.S[23]": fields["ClientFirstName"].lower() + "@example.com",
        "Line101": "%.2f" % rng.uniform(20000, 120000),
    })
    if rng.random() < 0.5:
        fields["Line349"] = "%.2f" % rng.uniform(10, 2000)
    if rng.random() < 0.3:
        fields["Schedule4[31]"] = "%.2f" % rng.uniform(100, 900)
    return fields


def spouse_of(rng, client):
    """The second client of a couple, and the spouse fields on the first client's side."""
    spouse = person(rng, "Client", last=client["ClientLastName"])
    spouse.update({"ClientMaritalStatus": "1", "ClientGender": rng.choice(["1", "2"])})
    client.update({
        "SpouseSIN": spouse["ClientSIN"],
        "SpouseFirstname": spouse["ClientFirstName"],
        "SpouseLastName": spouse["ClientLastName"],
    })
    spouse.update({
        "SpouseSIN": client["ClientSIN"],
        "SpouseFirstname": client["ClientFirstName"],
        "SpouseLastName": client["ClientLastName"],
    })
    return spouse


def add_sole_proprietorship(rng, fields, owners):
    """Form 2125, copy 0 (the taxpayer's): the business and, from row 2 on, further owners."""
    city, prov, postal = rng.choice(CITIES)
    fields.update({
        "T2125.S[0,3]": "%s %s" % (fields["ClientLastName"], rng.choice(BUSINESS)),
        "T2125[0,2]": "%d-12-31" % rng.randint(2014, 2016),
        "T2125.S[0,12]": "%09d" % rng.randint(100000000, 899999999),
        "T2125.S[0,5]": "%d %s" % (rng.randint(1, 999), rng.choice(STREETS)),
        "T2125.S[0,7]": city,
        "T2125.S[0,10]": prov,
        "T2125.S[0,8]": postal,
        "T2125Owners[0,0,0]": "%d" % (100 - 10 * owners),
    })
    for n in range(2, 2 + owners):
        c2, p2, z2 = rng.choice(CITIES)
        fields["T2125Owners.S[0,%d,0]" % n] = rng.choice(FIRST)
        fields["T2125Owners.S[0,%d,1]" % n] = rng.choice(LAST)
        fields["T2125Owners[0,%d,0]" % n] = "10"
        fields["T2125Owners.S[0,%d,2]" % n] = sin(rng)
        fields["T2125Owners.S[0,%d,3]" % n] = "%d %s, %s, %s %s" % (
            rng.randint(1, 999), rng.choice(STREETS), c2, p2, z2)


def t2_client(rng, name, number, year_end):
    city, prov, postal = rng.choice(CITIES)
    return {
        "LegalName": name + " Ltd.",
        "OperatingName": name,
        "T2Info.S[3]": number + "RC0001",
        "T2Info[2]": year_end,
        "T2Info.S[21]": "%d %s" % (rng.randint(1, 999), rng.choice(STREETS)),
        "T2Info.S[23]": city,
        "T2Info.S[24]": prov,
        "T2Info.S[25]": postal,
        "SigningOfficerFirstName": rng.choice(FIRST),
        "SigningOfficerLastName": rng.choice(LAST),
        "SigningOfficerTelephone": "(416) 555-%04d" % rng.randint(0, 9999),
    }


def password_hash(password):
    salt = os.urandom(16).hex()
    return {"salt": salt, "sha256": hashlib.sha256((salt + password).encode()).hexdigest()}


def write_return(folder, name, kind, year, primary, second=None, password=None, status=""):
    document = {"format": "Profile return", "kind": kind, "year": year,
                "primary": {"ClientStatus": status, "EFILEStatus": "", "fields": primary}}
    if second is not None:
        document["second"] = {"ClientStatus": status, "EFILEStatus": "", "fields": second}
    if password:
        document["password"] = password_hash(password)
    path = os.path.join(folder, name)
    with open(path, "w", encoding="utf-8") as out:
        json.dump(document, out, indent=2, sort_keys=True)
        out.write("\n")
    return path


def fixed_folder(folder, rng):
    for i, year in enumerate([2016, 2016, 2015, 2014]):
        client = t1_client(rng, married=False)
        write_return(folder, "Single%d.%02dT" % (i + 1, year - 2000), "T1", year, client,
                     status="Complete")
    for i, year in enumerate([2016, 2015]):
        client = t1_client(rng, married=True)
        spouse = spouse_of(rng, client)
        write_return(folder, "Couple%d.%02dT" % (i + 1, year - 2000), "T1", year, client, spouse)
    write_return(folder, "Protected.16T", "T1", 2016, t1_client(rng, False), password="maple")
    write_return(folder, "InUse.16T", "T1", 2016, t1_client(rng, False))
    write_return(folder, "Later.17T", "T1", 2017, t1_client(rng, False))
    for i, owners in enumerate([0, 2]):
        client = t1_client(rng, married=False)
        add_sole_proprietorship(rng, client, owners)
        write_return(folder, "SoleProprietor%d.16T" % (i + 1), "T1", 2016, client)
    for year in (2014, 2015, 2016):
        write_return(folder, "Harbourview%d.GT2" % year, "T2", year,
                     t2_client(rng, "Harbourview Consulting", "123456782", "%d-06-30" % year))
    write_return(folder, "Northwind.GT2", "T2", 2016,
                 t2_client(rng, "Northwind Outfitters", "876543215", "2016-12-31"))


def generated_folder(folder, rng, t1, t2):
    for i in range(t1):
        year = rng.choice([2014, 2015, 2016])
        couple = i % 4 == 0
        client = t1_client(rng, married=couple)
        spouse = spouse_of(rng, client) if couple else None
        if i % 10 == 5:
            add_sole_proprietorship(rng, client, rng.randint(0, 3))
        write_return(folder, "Client%05d.%02dT" % (i + 1, year - 2000), "T1", year, client, spouse)
    for i in range(t2):
        year = 2014 + i % 3
        write_return(folder, "Corp%05d.GT2" % (i + 1), "T2", year,
                     t2_client(rng, "Corporation %d" % (i // 3 + 1), "%09d" % (100000000 + i // 3),
                               "%d-12-31" % year))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder")
    parser.add_argument("--t1", type=int, default=0, help="generate this many T1 returns")
    parser.add_argument("--t2", type=int, default=0, help="generate this many T2 returns")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--hold-in-use", type=float, default=0, metavar="SECONDS",
                        help="keep InUse.16T locked this long after writing")
    args = parser.parse_args()
    os.makedirs(args.folder, exist_ok=True)
    rng = random.Random(args.seed)
    if args.t1 or args.t2:
        generated_folder(args.folder, rng, args.t1, args.t2)
        return 0
    fixed_folder(args.folder, rng)
    if args.hold_in_use > 0:
        with open(os.path.join(args.folder, "InUse.16T"), "rb") as held:
            fcntl.flock(held, fcntl.LOCK_EX)
            print("InUse.16T is in use for %g seconds" % args.hold_in_use, flush=True)
            time.sleep(args.hold_in_use)
    return 0


if __name__ == "__main__":
    sys.exit(main())
