// The run report with texts of any bytes (messages, questions, procedure labels, error texts,
// stage names carry text from source databases, which need not be UTF-8): the JSON written at
// the end and the terminal summary must come out whatever went in, and the JSON must read back.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/run_report.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  lf::RunReport report;
  while (in.remaining_bytes() > 0) {
    switch (in.ConsumeIntegralInRange<int>(0, 3)) {
      case 0:
        report.addMessage(in.ConsumeRandomLengthString(256), in.ConsumeIntegral<int>());
        break;
      case 1: {
        std::string text = in.ConsumeRandomLengthString(256);
        report.addQuestion(text, in.ConsumeIntegral<int>(), in.ConsumeIntegral<int>(),
                           in.ConsumeRandomLengthString(64));
        break;
      }
      case 2: {
        std::string procedure = in.ConsumeRandomLengthString(64);
        long number = in.ConsumeIntegral<long>();
        std::string description = in.ConsumeRandomLengthString(128);
        std::vector<std::string> trace;
        for (int k = in.ConsumeIntegralInRange<int>(0, 3); k > 0; --k)
          trace.push_back(in.ConsumeRandomLengthString(64));
        report.addError(procedure, number, description, trace, in.ConsumeIntegral<int>());
        break;
      }
      case 3: {
        lf::StageCounters& stage = report.stage(in.ConsumeRandomLengthString(32));
        stage.read += in.ConsumeIntegralInRange<long>(0, 1000000);
        stage.failed += in.ConsumeIntegralInRange<long>(0, 1000000);
        break;
      }
    }
  }
  const std::string written = report.toJson().dump(2);
  if (!nlohmann::json::accept(written)) std::abort();
  report.summary();
  report.failedRows();
  return 0;
}
