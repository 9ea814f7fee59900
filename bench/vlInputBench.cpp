// Scene text through the lexer: a large generated file of reals and of
// integers read token by token, against fscanf doing the same conversions
// and against a bare pass over the bytes (the limit for any stdio reader).
#include <benchmark/benchmark.h>
#include <unistd.h>
#include <zlib.h>

#include <random>
#include <string>

#include "nerio3d/nerio3d.h"
#include "nerio3d/platform/nrFileStream.h"

namespace {

constexpr size_t FILE_BYTES = 25 << 20;

struct TextFile {
  std::string path;
  size_t bytes;
};

// Writes about FILE_BYTES of numbers, as an exporter would, once per run.
TextFile makeFile(const char* name, bool reals, bool compress) {
  std::string path = std::string("/tmp/vlInputBench-") + std::to_string(getpid()) + "-" + name;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> coordinate(-100, 100);
  std::string text = "#VRML V2.0 utf8\n";
  char number[32];
  for (int i = 0; text.size() < FILE_BYTES; ++i) {
    if (reals)
      snprintf(number, sizeof number, "%.6g%s", coordinate(random), i % 3 == 2 ? ",\n" : " ");
    else
      snprintf(number, sizeof number, "%d%s", int(random() % 20000) - 1000, i % 3 == 2 ? ",\n" : " ");
    text += number;
  }
  if (compress) {
    gzFile gz = gzopen(path.c_str(), "wb");
    gzwrite(gz, text.data(), text.size());
    gzclose(gz);
  } else {
    FILE* f = fopen(path.c_str(), "w");
    fwrite(text.data(), 1, text.size(), f);
    fclose(f);
  }
  return {path, text.size()};
}

struct Files {
  TextFile reals = makeFile("reals.wrl", true, false);
  TextFile ints = makeFile("ints.wrl", false, false);
  TextFile realsGz = makeFile("reals.wrl.gz", true, true);
  ~Files() {
    for (const TextFile* f : {&reals, &ints, &realsGz}) unlink(f->path.c_str());
  }
};

const Files& files() {
  static Files f;
  return f;
}

// Reads every value of the file with vlInput, skipping the commas between
// triples as the reader does in a list; the counter keeps the loop honest.
template <typename T>
void readAll(benchmark::State& state, const TextFile& file) {
  for (auto _ : state) {
    FILE* stream = nrFileStream::open(file.path.c_str());
    vlInput in;
    in.setFilePointer(stream);
    T value;
    char comma;
    size_t count = 0;
    while (in.read(value)) {
      ++count;
      if (in.read(comma) && comma != ',') in.putBack(comma);
    }
    benchmark::DoNotOptimize(count);
    fclose(stream);
  }
  state.SetBytesProcessed(int64_t(state.iterations() * file.bytes));
}

void BM_vlInputReals(benchmark::State& state) { readAll<float>(state, files().reals); }
void BM_vlInputInts(benchmark::State& state) { readAll<int>(state, files().ints); }
// Counts the decompressed bytes.
void BM_vlInputRealsGzip(benchmark::State& state) { readAll<float>(state, files().realsGz); }

void BM_fscanfReals(benchmark::State& state) {
  size_t bytes = 0;
  for (auto _ : state) {
    FILE* stream = nrFileStream::open(files().reals.path.c_str());
    fscanf(stream, "%*[^\n]\n");
    float value;
    size_t count = 0;
    while (fscanf(stream, " %f ,", &value) == 1) ++count;
    benchmark::DoNotOptimize(count);
    bytes += ftell(stream);
    fclose(stream);
  }
  state.SetBytesProcessed(int64_t(bytes));
}

void BM_getcPass(benchmark::State& state) {
  size_t bytes = 0;
  for (auto _ : state) {
    FILE* stream = nrFileStream::open(files().reals.path.c_str());
    unsigned sum = 0;
    for (int c; (c = getc_unlocked(stream)) != EOF;) sum += c;
    benchmark::DoNotOptimize(sum);
    bytes += ftell(stream);
    fclose(stream);
  }
  state.SetBytesProcessed(int64_t(bytes));
}

}  // namespace

BENCHMARK(BM_vlInputReals)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_vlInputInts)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_vlInputRealsGzip)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_fscanfReals)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_getcPass)->Unit(benchmark::kMillisecond);
