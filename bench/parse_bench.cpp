// Throughput of the name and address parsers: one million generated names (single people,
// couples joined by "&" or "and", prefixes, comma forms, middle names, particles) and one
// million generated one-line addresses, each set parsed once per iteration. The figures are
// items_per_second: names per second and addresses per second.
#include <benchmark/benchmark.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "base/error_service.hpp"
#include "base/module_state.hpp"
#include "records/name_parsing.hpp"
#include "summaries/address_parsing.hpp"

namespace {

constexpr size_t kCount = 1'000'000;

// Couple prefixes always pass through a resumed fault, as in an import where the user
// answers "resume next".
class ResumeNextErrorService : public lf::ErrorService {
 public:
  void enterProcedure(std::string_view) override {}
  void leaveProcedure() override {}
  void setError(const lf::ErrorInfo&) override {}
  void reportError() override {}
  int getErrorAction() override { return lf::kErrorResumeNext; }
};

template <size_t N>
const std::string& pick(std::mt19937& rng, const std::array<std::string, N>& list) {
  return list[rng() % N];
}

const std::array<std::string, 12> kFirst = {"John", "Mary",  "Anna",  "Pierre", "Li",    "Fatima",
                                            "Ann",  "Marie", "David", "Chloe",  "Ahmed", "Sandy"};
const std::array<std::string, 12> kLast = {"Smith",  "Tremblay", "Nguyen", "Van Dyke",
                                           "Roy",    "MacLeod",  "Gagnon", "De Luca",
                                           "Wilson", "Khan",     "Martin", "St. John"};
const std::array<std::string, 8> kPrefix = {"Mr.", "Mrs.", "Ms",   "Dr.",
                                            "Mme", "Rev.", "Miss", "M."};

std::vector<std::string> generateNames() {
  std::mt19937 rng(20261123);
  std::vector<std::string> names;
  names.reserve(kCount);
  for (size_t i = 0; i < kCount; ++i) {
    const std::string& first = pick(rng, kFirst);
    const std::string& other = pick(rng, kFirst);
    const std::string& last = pick(rng, kLast);
    switch (i % 10) {
      case 0:
        names.push_back(first + " " + last);
        break;
      case 1:
        names.push_back(first + " " + other + " " + last);
        break;
      case 2:
        names.push_back(pick(rng, kPrefix) + " " + first + " " + last);
        break;
      case 3:
        names.push_back(last + ", " + first);
        break;
      case 4:
        names.push_back(first + " & " + other + " " + last);
        break;
      case 5:
        names.push_back(first + " and " + other + " " + last);
        break;
      case 6:
        names.push_back(pick(rng, kPrefix) + " " + first + " " + last + " & " + pick(rng, kPrefix) +
                        " " + other + " " + last);
        break;
      case 7:
        names.push_back("Mr and Mrs " + last);
        break;
      case 8:
        names.push_back(last + ", " + first + " & " + other);
        break;
      default:
        names.push_back(first);
        break;
    }
  }
  return names;
}

const std::array<std::string, 8> kStreet = {"Main St",     "King St W",      "Crab Ave",
                                            "Elm Rd",      "Rue Principale", "Bay St",
                                            "Portage Ave", "1st Ave"};
const std::array<std::string, 8> kCity = {"Toronto", "Montreal", "North York",   "Winnipeg",
                                          "Halifax", "Calgary",  "Fort St John", "Regina"};
const std::array<std::string, 10> kProvince = {"ON",    "Ontario", "QC", "B.C.", "Alberta",
                                               "Sask.", "NS",      "MB", "Nfld", "PEI"};
const std::array<std::string, 6> kPostal = {"M5V 1A1", "M5V1A1",  "H2X 3Y7",
                                            "T2P1J9",  "R3C 4T5", "B3H2Y9"};

std::vector<std::string> generateAddresses() {
  std::mt19937 rng(1123);
  std::vector<std::string> lines;
  lines.reserve(kCount);
  for (size_t i = 0; i < kCount; ++i) {
    const std::string number = std::to_string(1 + rng() % 9999);
    const std::string& street = pick(rng, kStreet);
    const std::string& city = pick(rng, kCity);
    const std::string& province = pick(rng, kProvince);
    const std::string& postal = pick(rng, kPostal);
    switch (i % 6) {
      case 0:
        lines.push_back(number + " " + street + ", " + city + ", " + province + " " + postal);
        break;
      case 1:
        lines.push_back(number + " " + street + ", " + city + " " + province + " " + postal);
        break;
      case 2:
        lines.push_back(number + " " + street + " " + city + " " + province + " " + postal);
        break;
      case 3:
        lines.push_back("PO Box " + number + ", " + city + " " + postal);
        break;
      case 4:
        lines.push_back(number + " " + street + "\r\n" + city + ", " + province + " " + postal);
        break;
      default:
        lines.push_back(city);
        break;
    }
  }
  return lines;
}

void BM_ParseNames(benchmark::State& state) {
  static const std::vector<std::string> names = generateNames();
  ResumeNextErrorService errors;
  lf::moduleState().errorClass = &errors;
  lf::moduleState().errorClassIsSet = true;
  for (auto _ : state) {
    for (const std::string& name : names) {
      lf::ContactNameFields fields = lf::parseNameForContactFields(name);
      benchmark::DoNotOptimize(fields);
      if (!fields.spouse.empty()) {
        lf::PersonNameParts spouse = lf::parseSingleNameString(fields.spouse);
        benchmark::DoNotOptimize(spouse);
      }
    }
  }
  lf::moduleState().errorClass = nullptr;
  lf::moduleState().errorClassIsSet = false;
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * names.size()));
  state.SetLabel("names");
}

void BM_ParseAddresses(benchmark::State& state) {
  static const std::vector<std::string> lines = generateAddresses();
  ResumeNextErrorService errors;
  lf::moduleState().errorClass = &errors;
  lf::moduleState().errorClassIsSet = true;
  std::string line;
  for (auto _ : state) {
    for (const std::string& original : lines) {
      line = original;  // the parser rewrites its argument
      lf::AddressFields fields = lf::parseAddressString(line);
      benchmark::DoNotOptimize(fields);
    }
  }
  lf::moduleState().errorClass = nullptr;
  lf::moduleState().errorClassIsSet = false;
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines.size()));
  state.SetLabel("addresses");
}

BENCHMARK(BM_ParseNames)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseAddresses)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
