// The wireless scan from "iwlist wlan0 scan" output to the access point list and its reply.
#include <benchmark/benchmark.h>

#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "canned_shell.h"
#include "common/pieces.h"
#include "inputs.h"
#include "wireless/scan_parse.h"
#include "wireless/wifi_item.h"
#include "wireless/wifi_list.h"
#include "work_counters.h"

namespace {

constexpr const char* kScan = "sudo iwlist wlan0 scan";

std::list<wifiItem> accessPointsOf(const std::string& output) {
  std::list<wifiItem> list;
  appendAccessPoints(cutScanBlocks(splitPieces(output)), list);
  return list;
}

// The pieces cut into cells and read into the entries worth offering.
void BM_ScanToAccessPoints(benchmark::State& state) {
  const int cells = static_cast<int>(state.range(0));
  const std::string output = scanOutput(cells);
  const std::vector<std::string> pieces = splitPieces(output);
  if (cutScanBlocks(pieces).size() != static_cast<std::size_t>(cells) + 1) {
    state.SkipWithError("the generated scan does not cut into its cells");
    return;
  }
  for (auto _ : state) {
    std::list<wifiItem> list;
    appendAccessPoints(cutScanBlocks(pieces), list);
    benchmark::DoNotOptimize(list);
  }
  countWork(state, cells, output.size());
}
BENCHMARK(BM_ScanToAccessPoints)->RangeMultiplier(2)->Range(8, 512)->Complexity(benchmark::oN);

// The application's JSON array of the entries a scan offers.
void BM_WifiListReply(benchmark::State& state) {
  const std::list<wifiItem> list = accessPointsOf(scanOutput(static_cast<int>(state.range(0))));
  std::ostringstream out;
  printWifiList(list, applicationMode, out);
  const std::size_t replySize = out.str().size();
  for (auto _ : state) {
    out.str("");
    printWifiList(list, applicationMode, out);
    benchmark::DoNotOptimize(out);
  }
  countWork(state, static_cast<std::int64_t>(list.size()), replySize);
}
BENCHMARK(BM_WifiListReply)->RangeMultiplier(2)->Range(8, 512)->Complexity(benchmark::oN);

// The whole get-wifi-list operation, the scan answered from memory.
void BM_GetWifiList(benchmark::State& state) {
  const int cells = static_cast<int>(state.range(0));
  const std::string output = scanOutput(cells);
  CannedShell canned;
  canned.answer(kScan, output);
  std::ostringstream out;
  for (auto _ : state) {
    out.str("");
    std::list<wifiItem> list;
    getWifiList(list, applicationMode, out);
    benchmark::DoNotOptimize(list);
  }
  if (out.str().rfind("[\n{ \"ssid\":", 0) != 0) state.SkipWithError("no access point offered");
  countWork(state, cells, output.size());
}
BENCHMARK(BM_GetWifiList)->RangeMultiplier(2)->Range(8, 512)->Complexity(benchmark::oN);

}  // namespace
