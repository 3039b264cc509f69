// The export templates the CANTAX wizards save: the list of variables CANTAX is told to export,
// one a line with CR LF line ends, between "@EXPORT" and "@CR". The T1 template asks for 55
// variables, so a complete T1 export row has 55 values; the T2Plus template asks for 24.
#pragma once

#include <string>
#include <vector>

namespace lf {

enum class CANTAXProduct { T1, T2Plus };

// The template's lines in order, "@EXPORT" first and "@CR" last.
const std::vector<std::string>& cantaxTemplateLines(CANTAXProduct product);

// The template's whole text: every line followed by CR LF.
std::string cantaxTemplateText(CANTAXProduct product);

// The default path of the template: the remembered path when it is not blank and its folder
// exists; otherwise the working folder (or `fallbackFolder` when there is no working folder
// service), then "CANTAX Import", then the application's display name followed by
// " T1 Export File.tpl" (" T2Plus Export File.tpl").
std::string defaultCANTAXTemplatePath(CANTAXProduct product, const std::string& rememberedPath,
                                      const std::string& fallbackFolder = ".");

// Saves the template (cmdSaveTemplate_Click after its dialog): ".tpl" is appended unless the
// name ends in ".TPL" in any case, the folder is made when missing, an existing file is
// replaced. Answers the path written; throws Failure naming the file when it cannot be.
std::string saveCANTAXTemplate(CANTAXProduct product, const std::string& path);

}  // namespace lf
