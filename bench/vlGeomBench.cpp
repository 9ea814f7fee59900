// The reader's geometry steps on a face set of 700 x 700 quads (as in a 25 MB
// terrain file): index-list conversion, normal generation at crease angle 1
// and the static bound, against a bare pass computing the face normals, the
// least any normal generation must do.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "nerio3d/nerio3d.h"

namespace {

constexpr int QUADS = 700, SIDE = QUADS + 1;

struct Grid {
  std::vector<nrVec3f> points;
  std::vector<int> coordIndex;

  Grid() {
    for (int y = 0; y < SIDE; ++y)
      for (int x = 0; x < SIDE; ++x)
        points.push_back(nrVec3f(float(x), float(y), 3 * std::sin(x * 0.05f) * std::cos(y * 0.07f)));
    for (int y = 0; y < QUADS; ++y)
      for (int x = 0; x < QUADS; ++x) {
        int v = y * SIDE + x;
        for (int c : {v, v + 1, v + SIDE + 1, v + SIDE, -1}) coordIndex.push_back(c);
      }
  }

  // A face set over the grid with its coordinate list converted.
  nrIndexedFaceSet* faceSet() const {
    nrIndexedFaceSet* set = new nrIndexedFaceSet;
    set->ref();
    nrCoordSet3f* coords = new nrCoordSet3f;
    coords->setRange(0, unsigned(points.size()), points.data());
    set->setCoordSet(coords);
    set->setCoordIndex(int(coordIndex.size()), coordIndex.data());
    set->getPrimCount();
    return set;
  }
};

const Grid& grid() {
  static Grid g;
  return g;
}

void corners(benchmark::State& state) { state.SetItemsProcessed(int64_t(state.iterations()) * QUADS * QUADS * 4); }

void BM_convertCoordIndex(benchmark::State& state) {
  nrIndexedFaceSet* set = grid().faceSet();
  const std::vector<int>& list = grid().coordIndex;
  for (auto _ : state) {
    state.PauseTiming();
    set->setCoordIndex(int(list.size()), list.data());
    state.ResumeTiming();
    benchmark::DoNotOptimize(set->getPrimCount());
  }
  corners(state);
  set->unref();
}

void BM_computeNorms(benchmark::State& state) {
  nrIndexedFaceSet* set = grid().faceSet();
  for (auto _ : state) vlGeom::computeNorms(set, 1.0f);
  corners(state);
  set->unref();
}

// What the reader does after a face set's fields: normals, then the bound
// (which converts the new normal list too).
void BM_computeNormsAndStaticBound(benchmark::State& state) {
  nrIndexedFaceSet* set = grid().faceSet();
  for (auto _ : state) {
    vlGeom::computeNorms(set, 1.0f);
    vlGeom::calcStaticBound(set);
  }
  corners(state);
  set->unref();
}

void BM_faceNormalsPass(benchmark::State& state) {
  const Grid& g = grid();
  std::vector<nrVec3f> normals(size_t(QUADS) * QUADS);
  for (auto _ : state) {
    const int* index = g.coordIndex.data();
    for (nrVec3f& n : normals) {
      nrVec3f e1, e2;
      e1.sub(g.points[size_t(index[1])], g.points[size_t(index[0])]);
      e2.sub(g.points[size_t(index[2])], g.points[size_t(index[0])]);
      n.cross(e1, e2);
      n.normalize();
      index += 5;
    }
    benchmark::DoNotOptimize(normals.data());
  }
  corners(state);
}

}  // namespace

BENCHMARK(BM_convertCoordIndex)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_computeNorms)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_computeNormsAndStaticBound)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_faceNormalsPass)->Unit(benchmark::kMillisecond);
