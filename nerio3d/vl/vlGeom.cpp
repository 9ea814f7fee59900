#include "nerio3d/vl/vlGeom.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/geometry/nrCoordSet.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/vl/vlDebugError.h"

namespace {

// Positions welded by their exact bytes: open addressing with linear probing
// over a power-of-two table of at least twice the positions it can meet, so
// probes stay short. Positions are numbered in the order they first appear.
class PositionTable {
 public:
  explicit PositionTable(unsigned maxPositions) : keys(3 * maxPositions) {
    unsigned size = 16;
    while (size < 2 * maxPositions) size <<= 1;
    mask = size - 1;
    slots.setCount(size);
    keys.setCount(3 * maxPositions);
  }

  // The number of p, made on first sight.
  int find(const float* p) {
    uint32_t k[3];
    memcpy(k, p, sizeof k);
    uint64_t h = (uint64_t(k[0]) * 0x9E3779B97F4A7C15ull) ^ (uint64_t(k[1]) * 0xC2B2AE3D27D4EB4Full) ^
                 (uint64_t(k[2]) * 0x165667B19E3779F9ull);
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 32;
    int* slot = slots.getArray();
    const int* stored = keys.getArray();
    for (unsigned s = unsigned(h) & mask;; s = (s + 1) & mask) {
      int entry = slot[s] - 1;  // slots hold number + 1; 0 is empty
      if (entry < 0) {
        int* key = keys.getArray() + 3 * count;
        memcpy(key, k, sizeof k);
        slot[s] = ++count;
        return count - 1;
      }
      if (memcmp(stored + 3 * entry, k, sizeof k) == 0) return entry;
    }
  }
  int getCount() const { return count; }

 private:
  nrIntArray slots;
  nrIntArray keys;
  unsigned mask;
  int count = 0;
};

// A zeroed array of n elements in one allocation.
template <typename A>
void size(A& array, unsigned n) {
  array.setSize(n ? n : 1);
  array.setCount(n);
}

}  // namespace

void vlGeom::computeNorms(nrIndexedFaceSet* set, float creaseAngle) {
  nrCoordSet* coordSet = set ? set->getCoordSet() : nullptr;
  if (!coordSet) return;
  // Reading the lengths and the index set converts the index lists first.
  const nrIntArray& lengthArray = set->getLengths();
  nrIndexSet* indexSet = set->getCoordIndexSet();
  const int* index = indexSet ? indexSet->getArray().getArray() : nullptr;
  unsigned indexCount = indexSet ? indexSet->getArray().getCount() : 0;
  const int* lengths = lengthArray.getArray();
  int faces = set->getPrimCount();
  if (faces > int(lengthArray.getCount())) faces = int(lengthArray.getCount());
  nrGLAttr coords;
  coordSet->getGLAttr(coords);
  int coordCount = int(coordSet->getCount());

  unsigned corners = 0;
  for (int f = 0; f < faces; ++f) corners += unsigned(lengths[f]);
  if (!index || corners > indexCount) {
    vlDebugError::post("vlGeom::computeNorms", "%u corners but %u coordinate indices", corners, indexCount);
    return;
  }
  for (unsigned k = 0; k < corners; ++k)
    if (index[k] < 0 || index[k] >= coordCount) {
      vlDebugError::post("vlGeom::computeNorms", "Coordinate index %d out of range", index[k]);
      return;
    }
  auto coordOf = [&](int k) { return reinterpret_cast<const float*>(coords.data + coords.stride * index[k]); };
  auto position = [&](int k) {
    const float* c = coordOf(k);
    return nrVec3f(c[0], c[1], c[2]);
  };

  // Corner k lies at position cornerPosition[k]; a coordinate is hashed once,
  // on its first use (positionOf holds its position + 1).
  unsigned maxPositions = corners < unsigned(coordCount) ? corners : unsigned(coordCount);
  PositionTable table(maxPositions);
  nrIntArray positionOf, cornerPosition, groupStart;
  size(positionOf, unsigned(coordCount));
  size(cornerPosition, corners);
  size(groupStart, maxPositions + 1);
  int* positionOfCoord = positionOf.getArray();
  int* cornerPos = cornerPosition.getArray();
  int* start = groupStart.getArray();
  for (unsigned k = 0; k < corners; ++k) {
    int& p = positionOfCoord[index[k]];
    if (!p) p = table.find(coordOf(int(k))) + 1;
    cornerPos[k] = p - 1;
    ++start[p];
  }
  int positions = table.getCount();
  for (int p = 0; p < positions; ++p) start[p + 1] += start[p];

  // Face normals, and the (face, corner) pairs of each position in walk order.
  nrVec3fArray faceNormalArray;
  nrIntArray pairArray, fillArray;
  size(faceNormalArray, unsigned(faces));
  size(pairArray, 2 * corners);
  size(fillArray, unsigned(positions));
  nrVec3f* faceNormal = faceNormalArray.getArray();
  int* pairs = pairArray.getArray();
  int* fill = fillArray.getArray();
  for (int f = 0, k = 0; f < faces; ++f) {
    int len = lengths[f];
    if (len >= 3) {
      nrVec3f p0(position(k)), p1(position(k + 1)), p2(position(k + 2)), e1, e2;
      e1.sub(p1, p0);
      e2.sub(p2, p0);
      faceNormal[f].cross(e1, e2);
      faceNormal[f].normalize();
    }
    for (int c = 0; c < len; ++c, ++k) {
      int p = cornerPos[k];
      int* pair = pairs + 2 * (start[p] + fill[p]++);
      pair[0] = f;
      pair[1] = k;
    }
  }

  // Corner k of face f stands at k + f in the VRML list, after one -1 per earlier face.
  nrMFInt* normalIndex = static_cast<nrMFInt*>(set->getField(nrIndexedFaceSet::NORMAL_INDEX_FIELD));
  normalIndex->setCount(corners + unsigned(faces));
  int* list = normalIndex->edit();
  for (int f = 0, end = 0; f < faces; ++f) {
    end += lengths[f] + 1;
    list[end - 1] = -1;
  }

  // Each position's pairs group around a seed: a later pair joins when its
  // face normal is within the crease of the seed's, and leaves the list.
  float q = std::cos(creaseAngle);
  nrVec3fArray normalArray;
  size(normalArray, corners);
  nrVec3f* normals = normalArray.getArray();
  int m = 0;
  for (int p = 0; p < positions; ++p) {
    int* group = pairs + 2 * start[p];
    int count = start[p + 1] - start[p];
    for (int seed = 0; seed < count; ++seed, ++m) {
      const nrVec3f& n0 = faceNormal[group[2 * seed]];
      list[group[2 * seed + 1] + group[2 * seed]] = m;
      nrVec3f sum = n0;
      int joined = 1;
      for (int j = seed + 1; j < count;) {
        int* pair = group + 2 * j;
        const nrVec3f& n = faceNormal[pair[0]];
        if (n.dot(n0) > q) {
          sum.add(sum, n);
          ++joined;
          list[pair[1] + pair[0]] = m;
          --count;
          pair[0] = group[2 * count];
          pair[1] = group[2 * count + 1];
        } else {
          ++j;
        }
      }
      normals[m].set(sum[0] / joined, sum[1] / joined, sum[2] / joined);
      normals[m].normalize();
    }
  }

  nrNormalSet3f* normalSet = new nrNormalSet3f;
  normalSet->setRange(0, unsigned(m), normals);
  set->setNormalSet(normalSet);
  set->setNormalPerVertex(1);
}

void vlGeom::calcStaticBound(nrGeometry* geometry) {
  if (!geometry) return;
  // Marked out of date in DYNAMIC mode, the box is computed by the next read
  // with every pending change applied, and then kept.
  geometry->setBoundMode(nrGeometry::DYNAMIC);
  geometry->getBoxBound();
  geometry->setBoundMode(nrGeometry::STATIC);
}
