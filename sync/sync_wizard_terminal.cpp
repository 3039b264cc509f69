// Rendering of the wizard's steps as text and the commands that work the controls.
#include "sync/sync_wizard_terminal.hpp"

#include <fmt/format.h>

#include <sstream>
#include <string>
#include <vector>

#include "base/general_utilities.hpp"
#include "host/file_dialog.hpp"
#include "records/node_keys.hpp"
#include "sync/sync_wizard.hpp"

namespace lf {
namespace {

constexpr int kPageSize = 40;

const char* mark(bool on) {
  return on ? "[x]" : "[ ]";
}

// The listed nodes of a tree: every node but the root, in tree order.
std::vector<int> listedNodes(const ClientTree& tree) {
  std::vector<int> nodes;
  for (int i = 0; i < tree.count(); ++i)
    if (tree.node(i).key != ClientTree::kRootKey) nodes.push_back(i);
  return nodes;
}

class TerminalSession {
 public:
  TerminalSession(SyncWizard& wizard, std::istream& in, std::ostream& out)
      : w_(wizard), in_(in), out_(out) {}

  bool run(const std::string& exportFile) {
    w_.Initialize();
    if (!exportFile.empty()) w_.cmdOpenFile(exportFile);
    int shownStep = -1;
    while (w_.isOpen()) {
      if (w_.step() != shownStep) {
        shownStep = w_.step();
        page_ = 0;
        showStep();
      }
      out_ << "> " << std::flush;
      std::string line;
      if (!std::getline(in_, line)) {
        w_.cmdNav_Click(SyncWizard::kNavCancel);
        break;
      }
      if (command(GeneralUtilities::trim(line)) && w_.isOpen() && w_.step() == shownStep)
        showStep();
    }
    out_ << (w_.finished() ? "Finished.\n" : "Cancelled.\n");
    return w_.finished();
  }

 private:
  ClientTree& tree() { return w_.step() == 6 ? w_.tvwCategories : w_.tvwContacts; }

  void showStep() {
    const SyncWizard::StepCaptions c = w_.captions();
    out_ << "\n== " << c.title << " (step " << w_.step() << ")\n";
    if (!c.heading.empty()) out_ << c.heading << "\n";
    if (!c.label.empty()) out_ << c.label << "\n";
    switch (w_.step()) {
      case 0:
        for (int i = 0; i < 4; ++i)
          out_ << fmt::format("  {} {}  {}\n", mark(w_.chkSynchObjects[i]), i + 1, c.options[i]);
        out_ << "Type 1-4 to tick or untick.\n";
        break;
      case 2:
        out_ << "  Export file: " << w_.engine().databaseLocation
             << (w_.engine().useDatabase ? " (open)" : "") << "\n"
             << "Type o PATH to open the export file.\n";
        break;
      case 3:
      case 8:
      case 6:
        showTree();
        if (w_.step() == 6)
          out_ << "Type t N to choose the category.\n";
        else
          out_ << "Type t N [N-M ...] to tick or untick, a for " << w_.cmdSelectAllCaption()
               << ", l [N] to list from N, s TEXT to search.\n";
        break;
      case 5:
      case 7:
        showDates(c);
        break;
      case 4:
        out_ << w_.summary();
        out_ << fmt::format("  {} Only synchronize new items (new)\n",
                            mark(w_.chkOnlySynchNewItems));
        out_ << fmt::format("  {} Look for duplicate clients (dup)\n",
                            mark(w_.duplicateCheckEnabled));
        break;
    }
    showButtons();
  }

  void showButtons() {
    std::string buttons;
    if (w_.navEnabled(SyncWizard::kNavBack)) buttons += "b Back  ";
    if (w_.navEnabled(SyncWizard::kNavNext)) buttons += "n Next  ";
    if (w_.navEnabled(SyncWizard::kNavFinish)) buttons += "f Finish  ";
    out_ << buttons << "c Cancel\n";
  }

  void showTree() {
    const ClientTree& t = tree();
    const std::vector<int> nodes = listedNodes(t);
    const int from = std::min<int>(page_, static_cast<int>(nodes.size()));
    const int to = std::min<int>(from + kPageSize, static_cast<int>(nodes.size()));
    for (int n = from; n < to; ++n) showNode(nodes, n);
    long checked = 0;
    for (int i : nodes) checked += t.node(i).checked ? 1 : 0;
    out_ << fmt::format("  {} of {} checked", checked, nodes.size());
    if (to < static_cast<int>(nodes.size())) out_ << fmt::format("; l {} for more", to + 1);
    out_ << "\n";
  }

  void showNode(const std::vector<int>& nodes, int n) {
    const ClientTreeNode& node = tree().node(nodes[n]);
    out_ << fmt::format("  {} {:>5}  {}  ({})\n", mark(node.checked), n + 1, node.text,
                        getSelectedNodeIDStringFromString(node.key));
  }

  void showDates(const SyncWizard::StepCaptions& c) {
    const int step = w_.step();
    const SyncWizard::DateRangeFields& f = w_.dateFields(step);
    out_ << fmt::format("  ({}) {}  [all]\n", f.useRange ? ' ' : '*', c.options[0]);
    out_ << fmt::format("  ({}) {}  [range]\n", f.useRange ? '*' : ' ', c.options[1]);
    for (int t = 0; t < 4; ++t)
      out_ << fmt::format("      ({}) {}  [type {}]\n", f.rangeType == t ? '*' : ' ',
                          c.options[2 + t], t);
    out_ << fmt::format("  start: {}{}\n", f.startText, f.startEnabled ? "" : " (off)");
    out_ << fmt::format("  end:   {}{}\n", f.endText, f.endEnabled ? "" : " (off)");
    if (step == 5)
      out_ << fmt::format("  {} Only work in progress (wip)\n", mark(w_.chkImportOnlyWIP));
    out_ << "Type all, range, type N, start DATE, end DATE" << (step == 5 ? ", wip" : "") << ".\n";
  }

  // Toggles the listed nodes named by numbers and ranges ("3 7-9").
  void toggle(std::istringstream& args) {
    ClientTree& t = tree();
    const std::vector<int> nodes = listedNodes(t);
    std::string word;
    while (args >> word) {
      int first = 0, last = 0;
      const auto dash = word.find('-');
      try {
        first = std::stoi(word.substr(0, dash));
        last = dash == std::string::npos ? first : std::stoi(word.substr(dash + 1));
      } catch (const std::exception&) {
        out_ << "Not a number: " << word << "\n";
        continue;
      }
      for (int n = first; n <= last; ++n) {
        if (n < 1 || n > static_cast<int>(nodes.size())) continue;
        const int index = nodes[n - 1];
        if (w_.step() == 6)
          t.checkAllChildNodes(!t.node(index).checked, index);
        else
          t.node(index).checked = !t.node(index).checked;
      }
    }
  }

  // Runs one command line; true when the step should be shown again.
  bool command(const std::string& line) {
    std::istringstream args(line);
    std::string verb;
    args >> verb;
    std::string rest;
    std::getline(args >> std::ws, rest);
    const int step = w_.step();
    if (verb.empty()) return false;
    if (verb == "n" || verb == "b" || verb == "f" || verb == "c") {
      const int button = verb == "c"   ? SyncWizard::kNavCancel
                         : verb == "b" ? SyncWizard::kNavBack
                         : verb == "n" ? SyncWizard::kNavNext
                                       : SyncWizard::kNavFinish;
      if (!w_.navEnabled(button)) out_ << "Not available on this step.\n";
      w_.cmdNav_Click(button);
      return false;
    }
    if (step == 0 && verb.size() == 1 && verb[0] >= '1' && verb[0] <= '4') {
      w_.chkSynchObjects[verb[0] - '1'] = !w_.chkSynchObjects[verb[0] - '1'];
      return true;
    }
    if (step == 2 && verb == "o" && !rest.empty()) {
      PresetFileDialog dialog(rest);
      w_.cmdOpenFile_Click(dialog);
      return true;
    }
    if (step == 3 || step == 8 || step == 6) {
      if (verb == "t") {
        std::istringstream numbers(rest);
        toggle(numbers);
        return true;
      }
      if (verb == "a" && step != 6) {
        w_.cmdSelectAll_Click();
        return true;
      }
      if (verb == "l") {
        page_ = rest.empty() ? 0 : std::max(0, std::atoi(rest.c_str()) - 1);
        return true;
      }
      if (verb == "s" && !rest.empty()) {
        const std::vector<int> nodes = listedNodes(tree());
        const std::string wanted = GeneralUtilities::lowerCase(rest);
        for (int n = 0; n < static_cast<int>(nodes.size()); ++n)
          if (GeneralUtilities::lowerCase(tree().node(nodes[n]).text).find(wanted) !=
              std::string::npos)
            showNode(nodes, n);
        return false;
      }
    }
    if (step == 5 || step == 7) {
      if (verb == "all" || verb == "range") {
        w_.optApptSyncDate_Click(step, verb == "range");
        return true;
      }
      if (verb == "type" && rest.size() == 1 && rest[0] >= '0' && rest[0] <= '3') {
        w_.optSynchApptDate_Click(step, rest[0] - '0');
        return true;
      }
      if (verb == "start" || verb == "end") {
        w_.txtDate_LostFocus(step, verb == "start" ? 0 : 1, rest);
        return true;
      }
      if (verb == "wip" && step == 5) {
        w_.chkImportOnlyWIP = !w_.chkImportOnlyWIP;
        return true;
      }
    }
    if (step == 4 && (verb == "new" || verb == "dup")) {
      bool& box = verb == "new" ? w_.chkOnlySynchNewItems : w_.duplicateCheckEnabled;
      box = !box;
      return true;
    }
    out_ << "Unknown command on this step.\n";
    showButtons();
    return false;
  }

  SyncWizard& w_;
  std::istream& in_;
  std::ostream& out_;
  int page_ = 0;
};

}  // namespace

bool runSyncWizardAtTerminal(SyncWizard& wizard, std::istream& in, std::ostream& out,
                             const std::string& exportFile) {
  return TerminalSession(wizard, in, out).run(exportFile);
}

}  // namespace lf
