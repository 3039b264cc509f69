// lfimport: the command-line program of the import component.
#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
  CLI::App app{"lfimport: brings outside data into a Ledgerfolio practice database"};
  app.require_subcommand(1);
  CLI11_PARSE(app, argc, argv);
  return 0;
}
