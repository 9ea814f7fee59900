// Scene files through the reader, as bytes of text per second: one face set
// of 700 x 700 quads (lists of numbers, normals generated at crease angle 1)
// and a city of 10000 transformed shapes (many small nodes, DEF/USE), each
// against a bare pass over the same bytes in the same run (the limit for any
// reader of the stream). The scenes are generated into the build tree.
#include <benchmark/benchmark.h>
#include <sys/stat.h>

#include <string>

#include "nerio3d/nerio3d.h"
#include "nerio3d/platform/nrFileStream.h"

namespace {

const std::string SCENES = NR_BENCH_SCENES;

size_t sizeOf(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 ? size_t(status.st_size) : 0;
}

void readScene(benchmark::State& state, const char* name) {
  std::string path = SCENES + "/" + name;
  nrPtrArray list;
  for (auto _ : state) {
    nrContainer* root = nullptr;
    if (!vlDB::readFile(path.c_str(), root, list) || !root) {
      state.SkipWithError("the scene did not read");
      break;
    }
    root->unref();
  }
  state.SetBytesProcessed(int64_t(state.iterations() * sizeOf(path)));
}

void bytePass(benchmark::State& state, const char* name) {
  std::string path = SCENES + "/" + name;
  for (auto _ : state) {
    FILE* stream = nrFileStream::open(path.c_str());
    unsigned sum = 0;
    for (int c; (c = getc_unlocked(stream)) != EOF;) sum += c;
    benchmark::DoNotOptimize(sum);
    fclose(stream);
  }
  state.SetBytesProcessed(int64_t(state.iterations() * sizeOf(path)));
}

void BM_vlDBTerrain700(benchmark::State& state) { readScene(state, "terrain700.wrl"); }
void BM_vlDBCity10000(benchmark::State& state) { readScene(state, "city10000.wrl"); }
void BM_bytePassTerrain700(benchmark::State& state) { bytePass(state, "terrain700.wrl"); }
void BM_bytePassCity10000(benchmark::State& state) { bytePass(state, "city10000.wrl"); }

}  // namespace

BENCHMARK(BM_vlDBTerrain700)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_bytePassTerrain700)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_vlDBCity10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_bytePassCity10000)->Unit(benchmark::kMillisecond);
