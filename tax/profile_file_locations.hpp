// modProfileUpdate: where a client's Profile return of a tax year lives, and the folder new
// Profile T1 returns are saved to.
//
// The return's location is PersonalTaxProfileInfo.ProfileFileLocation of the contact and year
// (the row the T1 import writes); the save-to folder is PersonalTaxDataImportInfo's
// DefaultProfileT1Folder of the year. Both are written through the database service.
#pragma once

#include <string>

namespace lf {

// The stored location; blank when the contact has no row for the year.
std::string getProfileFileLocationFromContactID(long contactID, long taxYear);
// Changes the location of an existing row; adds no row.
void putProfileFileLocationFromContactID(long contactID, long taxYear, const std::string& path);
// Changes the location of the row, or adds one (ContactNum, TaxYear, ProfileFileLocation and
// DateLastSynched now) when there is none.
void storeProfileFileLocation(long contactID, long taxYear, const std::string& path);

// The save-to folder of the year; adds the year's row (blank folder) when it is missing.
std::string getProfileT1SaveToFolder(long taxYear);
void putProfileT1SaveToFolder(const std::string& folder, long taxYear);

}  // namespace lf
