// Core runtime against the standard library doing the same work: appending to
// typed arrays, interning names, finding types by name.
#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "nerio3d/nerio3d.h"

static void BM_nrVec3fArrayAppend(benchmark::State& state) {
  for (auto _ : state) {
    nrVec3fArray a;
    for (int i = 0; i < state.range(0); ++i) a.append(nrVec3f(i, i, i));
    benchmark::DoNotOptimize(a.getArray());
  }
}
BENCHMARK(BM_nrVec3fArrayAppend)->Arg(64)->Arg(4096);

static void BM_stdVectorAppend(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<nrVec3f> a;
    for (int i = 0; i < state.range(0); ++i) a.push_back(nrVec3f(i, i, i));
    benchmark::DoNotOptimize(a.data());
  }
}
BENCHMARK(BM_stdVectorAppend)->Arg(64)->Arg(4096);

static std::vector<std::string> fieldNames() {
  std::vector<std::string> names;
  for (int i = 0; i < 1000; ++i) names.push_back("field" + std::to_string(i));
  return names;
}

static void BM_nrNameIntern(benchmark::State& state) {
  std::vector<std::string> names = fieldNames();
  for (auto _ : state)
    for (const std::string& n : names) benchmark::DoNotOptimize(nrName(n.c_str()).getEntry());
}
BENCHMARK(BM_nrNameIntern);

static void BM_stdUnorderedSetIntern(benchmark::State& state) {
  std::vector<std::string> names = fieldNames();
  std::unordered_set<std::string> table;
  for (auto _ : state)
    for (const std::string& n : names) benchmark::DoNotOptimize(&*table.insert(n).first);
}
BENCHMARK(BM_stdUnorderedSetIntern);

static void BM_nrTypeLookup(benchmark::State& state) {
  nrObject::initClasses();
  for (auto _ : state) benchmark::DoNotOptimize(nrType::getType("nrFloat"));
}
BENCHMARK(BM_nrTypeLookup);
