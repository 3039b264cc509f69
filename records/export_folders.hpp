// The remembered locations of the CANTAX export files and the Profile return folders, kept per
// user in UserGeneralSettings.
#pragma once

#include <string>

namespace lf {

// The path in CANTAXT1ExportFile (CANTAXT2ExportFile) of the signed-in user's settings row,
// empty when none is stored. Adds the user's row when it is missing.
std::string getCANTAXT1Folder();
std::string getCANTAXT2Folder();

// Stores the path there, adding the user's row first when it is missing.
void putCANTAXT1Folder(const std::string& path);
void putCANTAXT2Folder(const std::string& path);

// The folder in ProfileT1Folder (ProfileT2Folder) of the signed-in user's settings row, empty
// when none is stored; and storing it. The user's row is added when it is missing.
std::string getProfileT1Folder();
std::string getProfileT2Folder();
void putProfileT1Folder(const std::string& folder);
void putProfileT2Folder(const std::string& folder);

}  // namespace lf
