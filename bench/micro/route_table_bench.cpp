// The gateway readings of "route -n": the interface report's lookup and the default gateway.
#include <benchmark/benchmark.h>

#include <sstream>
#include <string>
#include <vector>

#include "canned_shell.h"
#include "common/pieces.h"
#include "inputs.h"
#include "link/interface_scan.h"
#include "link/interface_status.h"
#include "link/interface_values.h"
#include "work_counters.h"

namespace {

constexpr const char* kRouteTable = "route -n";
constexpr const char* kEth0 = "ifconfig eth0 2>&1";
constexpr const char* kInterfacesFile = "cat /etc/network/interfaces";
constexpr const char* kStaticEth0 =
    "auto lo\niface lo inet loopback\n\nauto eth0\niface eth0 inet static\n"
    "    address 10.0.0.5\n    netmask 255.255.255.0\n    gateway 10.0.0.1\n";

// The last eth0 route through a gateway, from the table's pieces.
void BM_InterfaceGateway(benchmark::State& state) {
  const int routes = static_cast<int>(state.range(0));
  const std::string table = routeTable(routes);
  const std::vector<std::string> pieces = splitPieces(table);
  if (interfaceGateway(pieces, "eth0") != kGeneratedDefaultGateway) {
    state.SkipWithError("the generated table gives another eth0 gateway");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(interfaceGateway(pieces, "eth0"));
  countWork(state, routes, table.size());
}
BENCHMARK(BM_InterfaceGateway)->RangeMultiplier(2)->Range(100, 10000)->Complexity(benchmark::oN);

// get-default-gateway over a table whose only default route is its last line.
void BM_GetDefaultGateway(benchmark::State& state) {
  const int routes = static_cast<int>(state.range(0));
  const std::string table = routeTable(routes);
  CannedShell canned;
  canned.answer(kRouteTable, table);
  std::ostringstream out;
  for (auto _ : state) {
    out.str("");
    getDefaultGateway(applicationMode, out);
  }
  if (out.str() !=
      std::string("{\"gateway\":{ \"value\":\"") + kGeneratedDefaultGateway + "\"}}\n") {
    state.SkipWithError("get-default-gateway read another gateway");
  }
  countWork(state, routes, table.size());
}
BENCHMARK(BM_GetDefaultGateway)->RangeMultiplier(2)->Range(100, 10000)->Complexity(benchmark::oN);

// get-eth0-parameters: the recorded static eth0 and its interfaces file, the large table.
void BM_GetEth0Parameters(benchmark::State& state) {
  const int routes = static_cast<int>(state.range(0));
  const std::string table = routeTable(routes);
  CannedShell canned;
  canned.answer(kEth0, fixtureText("ifconfig/lab-net-tools-2.10-eth0-static.txt"));
  canned.answer(kInterfacesFile, kStaticEth0);
  canned.answer(kRouteTable, table);
  std::ostringstream out;
  for (auto _ : state) {
    out.str("");
    getInterfaceValues(applicationMode, eth0Interface, out);
  }
  if (out.str() != std::string("{\"values\":{ \"ip address\":\"") + kGeneratedEth0Address +
                       "\",\"netmask address\":\"255.255.255.0\",\"gateway address\":\"" +
                       kGeneratedDefaultGateway + "\",\"type\":\"static\"}}\n") {
    state.SkipWithError("get-eth0-parameters replied otherwise");
  }
  countWork(state, routes, table.size());
}
BENCHMARK(BM_GetEth0Parameters)->RangeMultiplier(2)->Range(100, 10000)->Complexity(benchmark::oN);

}  // namespace
