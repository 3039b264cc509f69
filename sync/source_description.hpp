// What one sync source is to the shared engine, wizard and contact tree, besides its stages:
// its words (the source's word in captions, messages and operation names, the wizard's file
// dialog and refusals), its cross-reference tables, the shape of its client key, and the
// statement and columns its contact tree lists the clients by.
//
// A source file holds one of these as a constant; a reader compares two sources by reading
// their descriptions side by side.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sync/cross_reference.hpp"

namespace lf {

// The client-ID record of a source: a client is known by one column (TPS ClientID) or by
// several (CCH Practice ClientID and Engagement), kept together as one text joined by ",".
struct ClientKeyShape {
  std::vector<std::string> columns;

  // The parts of a key text. A one-column key is the text itself. A key of several columns:
  // the text split at "," and each piece trimmed, in column order; a blank text, or one
  // without a comma, leaves every part empty.
  std::vector<std::string> parse(std::string_view key) const;
  // The parts joined by ",".
  static std::string join(const std::vector<std::string>& parts);
};

struct SourceDescription {
  // The source's word where a caption, message or operation name holds it: "TPS".
  std::string word;
  // The cross-reference tables and columns, and the engine class of the error labels.
  const CrossReferenceWords* crossReferences = nullptr;
  ClientKeyShape clientKey;

  // The wizard: its form's name in the error labels, the file dialog, and the refusal when no
  // export is open.
  std::string wizardForm;
  std::string fileDialogExtension;
  std::string fileDialogTitle;
  std::string fileDialogFilter;
  std::string openFileRefusal;

  // The contact tree: its class in the error labels, the root's text, the statement that
  // lists the clients and its name and inactive columns (no inactive column: empty).
  std::string treeClass;
  std::string treeRootText;
  std::string treeClientsStatement;
  std::string treeNameColumn;
  std::string treeInactiveColumn;

  // The program file word that starts the labels of the run's progress handler, of the
  // operation that opens the wizard and of the wizard's own procedures.
  std::string formFile = "Ledgerfolio.exe";

  const std::string& engineClass() const { return crossReferences->engineClass; }
  // "Ledgerfolio.exe-" + class + "-" + procedure: the label of an operation of the source.
  static std::string label(std::string_view className, std::string_view procedureName);
  // file + "-" + class + "-" + procedure.
  static std::string label(std::string_view file, std::string_view className,
                           std::string_view procedureName);
};

}  // namespace lf
