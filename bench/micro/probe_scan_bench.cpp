// The state probes' scans and the interface report's sighting over many interfaces.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "common/pieces.h"
#include "inputs.h"
#include "link/interface_scan.h"
#include "link/probe_scan.h"
#include "work_counters.h"

namespace {

// is-enabled-wireless on a box without wlan0: every piece is searched.
void BM_ProbeAnyPieceContains(benchmark::State& state) {
  const int interfaces = static_cast<int>(state.range(0));
  const std::string output = ifconfigOutput(interfaces);
  const std::vector<std::string> pieces = splitPieces(output);
  if (anyPieceContains(pieces, "wlan0")) {
    state.SkipWithError("the generated ifconfig output names wlan0");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(anyPieceContains(pieces, "wlan0"));
  countWork(state, interfaces, output.size());
}
BENCHMARK(BM_ProbeAnyPieceContains)->RangeMultiplier(2)->Range(8, 512)->Complexity(benchmark::oN);

// is-connected-wireless: the last piece naming wlan0 decides on its UP/DOWN words.
void BM_ProbeLastWordVerdict(benchmark::State& state) {
  const int interfaces = static_cast<int>(state.range(0));
  const std::string output = ipLinkOutput(interfaces);
  const std::vector<std::string> pieces = splitPieces(output);
  if (!lastSelectedWordVerdict(pieces, "wlan0", "UP", "DOWN")) {
    state.SkipWithError("the generated links leave wlan0 down");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(lastSelectedWordVerdict(pieces, "wlan0", "UP", "DOWN"));
  }
  countWork(state, interfaces, output.size());
}
BENCHMARK(BM_ProbeLastWordVerdict)->RangeMultiplier(2)->Range(8, 512)->Complexity(benchmark::oN);

// The interface report's sighting of eth0, listed last among many interfaces.
void BM_IfconfigSighting(benchmark::State& state) {
  const int interfaces = static_cast<int>(state.range(0));
  const std::string output = ifconfigOutput(interfaces);
  const std::vector<std::string> pieces = splitPieces(output);
  const InterfaceSighting sighting = sightInterface(pieces, "eth0");
  if (!sighting.named || addressAndNetmask(sighting.inetLine).first != kGeneratedEth0Address) {
    state.SkipWithError("the sighting misses the recorded eth0");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(sightInterface(pieces, "eth0"));
  countWork(state, interfaces, output.size());
}
BENCHMARK(BM_IfconfigSighting)->RangeMultiplier(2)->Range(8, 512)->Complexity(benchmark::oN);

}  // namespace
