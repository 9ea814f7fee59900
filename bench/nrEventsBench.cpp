// One animation frame of n position interpolators, each driving a material
// colour: through routes from a time sensor, against the application doing
// the same work by hand, and against the bare interpolation.
#include <benchmark/benchmark.h>

#include <vector>

#include "nerio3d/nerio3d.h"

namespace {

struct Scene {
  nrTimeSensor* sensor = new nrTimeSensor;
  std::vector<nrPositionInterpolator*> movers;
  std::vector<nrMaterial*> materials;
  nrFloatArray keys;
  nrVec3fArray values;

  Scene(int64_t n, bool routed) {
    sensor->ref();
    sensor->setLoop(1);
    sensor->setCycleInterval(10);
    keys.append(0);
    keys.append(0.5f);
    keys.append(1);
    values.append(nrVec3f(0, 0, 0));
    values.append(nrVec3f(1, 0, 0));
    values.append(nrVec3f(1, 1, 0));
    for (int64_t i = 0; i < n; ++i) {
      nrPositionInterpolator* p = new nrPositionInterpolator;
      nrMaterial* m = new nrMaterial;
      p->ref();
      m->ref();
      p->setKey(keys);
      p->setKeyValue(values);
      if (routed) {
        sensor->connect(nrTimeSensor::FRACTION_CHANGED_FIELD, p, nrInterpolator::FRACTION_FIELD);
        p->connect(nrInterpolator::VALUE_FIELD, m, nrMaterial::DIFFUSE_COLOR);
      }
      movers.push_back(p);
      materials.push_back(m);
    }
  }
  ~Scene() {
    for (size_t i = 0; i < movers.size(); ++i) {
      movers[i]->unref();
      materials[i]->unref();
    }
    sensor->unref();
  }
};

// The time of frame k: the fraction changes every frame.
nrTime frameTime(int64_t k) { return 1000.0 + 0.01 * static_cast<double>(k % 997); }

}  // namespace

// The sensor pushes staleness along the routes; reading each colour, as a
// draw would, evaluates its interpolator.
static void BM_FrameRouted(benchmark::State& state) {
  Scene scene(state.range(0), true);
  std::vector<nrSFVec3f*> colors;
  for (nrMaterial* m : scene.materials) colors.push_back(static_cast<nrSFVec3f*>(m->getField(nrMaterial::DIFFUSE_COLOR)));
  int64_t k = 0;
  nrVec3f c;
  for (auto _ : state) {
    nrTimeSensor::updateSensors(frameTime(k++));
    for (nrSFVec3f* color : colors) color->get(c);
    benchmark::DoNotOptimize(c);
  }
}
BENCHMARK(BM_FrameRouted)->Arg(100)->Arg(1000);

// The application sets each fraction, reads each value and sets each colour.
static void BM_FrameByHand(benchmark::State& state) {
  Scene scene(state.range(0), false);
  int64_t k = 0;
  nrVec3f c;
  for (auto _ : state) {
    nrTimeSensor::updateSensors(frameTime(k++));
    float f = scene.sensor->getFractionChanged();
    for (size_t i = 0; i < scene.movers.size(); ++i) {
      scene.movers[i]->setFraction(f);
      scene.movers[i]->getValue(c);
      scene.materials[i]->setDiffuseColor(c);
    }
    benchmark::DoNotOptimize(c);
  }
}
BENCHMARK(BM_FrameByHand)->Arg(100)->Arg(1000);

// The interpolation alone, written out, setting each colour: the floor.
static void BM_FrameBare(benchmark::State& state) {
  Scene scene(state.range(0), false);
  int64_t k = 0;
  for (auto _ : state) {
    nrTimeSensor::updateSensors(frameTime(k++));
    float f = scene.sensor->getFractionChanged();
    unsigned i = f < 0.5f ? 1 : 2;
    float t = (f - scene.keys[i - 1]) / (scene.keys[i] - scene.keys[i - 1]);
    const nrVec3f& a = scene.values[i - 1];
    const nrVec3f& b = scene.values[i];
    nrVec3f c(a[0] * (1 - t) + b[0] * t, a[1] * (1 - t) + b[1] * t, a[2] * (1 - t) + b[2] * t);
    for (nrMaterial* m : scene.materials) m->setDiffuseColor(c);
    benchmark::DoNotOptimize(c);
  }
}
BENCHMARK(BM_FrameBare)->Arg(1000);

// Setting the inputs of interpolators nothing reads: no evaluation happens.
static void BM_UnreadInputs(benchmark::State& state) {
  Scene scene(state.range(0), false);
  float f = 0;
  for (auto _ : state) {
    f = f < 1 ? f + 0.001f : 0;
    for (nrPositionInterpolator* p : scene.movers) p->setFraction(f);
  }
}
BENCHMARK(BM_UnreadInputs)->Arg(1000);
