#include "nerio3d/vl/vlGeom.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "nerio3d/geometry/nrCoordSet.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/vl/vlDebugError.h"

namespace {

// Welds coordinates into positions by their exact bytes: open addressing
// with linear probing over a power-of-two table of at least twice the
// positions it can meet, so probes stay short. Positions are numbered in the
// order their coordinates are given; each keeps the coordinate it was first
// seen at, whose bytes are its key.
class PositionTable {
 public:
  PositionTable(const nrGLAttr& coords, unsigned maxPositions)
      : coords(coords), slots(tableSize(maxPositions)), firstCoord(maxPositions) {
    mask = slots.getSize() - 1;
  }

  // Room for the coordinates to weld, in order; weld() overwrites it.
  int* queue() { return firstCoord.getArray(); }
  // For each of the first n coordinates queued, whose positionOf[c] holds
  // minus the number of corners at it, sets positionOf[c] to the position
  // number + 1 and adds those corners to cornersAt[number + 1]. The table
  // lies far beyond the caches on large sets, so each slot is fetched
  // several coordinates ahead of its use.
  void weld(int n, int* positionOf, int* cornersAt) {
    enum { AHEAD = 8 };
    int* queued = firstCoord.getArray();
    for (int i = 0; i < n; ++i) {
      if (i + AHEAD < n) __builtin_prefetch(slots.getArray() + (hash(queued[i + AHEAD]) & mask));
      // Numbers never pass the queue's read position, so it is overwritten behind it.
      int c = queued[i];
      int position = find(c) + 1;
      cornersAt[position] -= positionOf[c];
      positionOf[c] = position;
    }
  }
  int getCount() const { return count; }

 private:
  static unsigned tableSize(unsigned maxPositions) {
    unsigned size = 16;
    while (size < 2 * maxPositions) size <<= 1;
    return size;
  }
  const unsigned char* bytesOf(int c) const { return coords.data + coords.stride * c; }
  unsigned hash(int c) const {
    uint32_t k[3];
    memcpy(k, bytesOf(c), sizeof k);
    uint64_t h = (uint64_t(k[0]) * 0x9E3779B97F4A7C15ull) ^ (uint64_t(k[1]) * 0xC2B2AE3D27D4EB4Full) ^
                 (uint64_t(k[2]) * 0x165667B19E3779F9ull);
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ull;
    return unsigned(h ^ h >> 32);
  }
  // The number of the position of coordinate c, made on first sight. A slot
  // holds the number + 1 in the bits below the table size (0: empty) and the
  // hash bits above them, so that other keys rarely need comparing.
  int find(int c) {
    unsigned* slot = reinterpret_cast<unsigned*>(slots.getArray());
    int* first = firstCoord.getArray();
    unsigned h = hash(c), tag = h & ~mask;
    for (unsigned s = h & mask;; s = (s + 1) & mask) {
      unsigned held = slot[s];
      if (!held) {
        first[count] = c;
        slot[s] = tag | unsigned(++count);
        return count - 1;
      }
      int entry = int(held & mask) - 1;
      if ((held & ~mask) == tag && memcmp(bytesOf(first[entry]), bytesOf(c), 3 * sizeof(float)) == 0) return entry;
    }
  }

  const nrGLAttr& coords;
  nrIntArray slots;
  nrIntArray firstCoord;
  unsigned mask;
  int count = 0;
};

// (x, y, z) scaled to unit length; a zero vector stays zero.
inline nrVec3f unit(float x, float y, float z) {
  float length = std::sqrt(x * x + y * y + z * z);
  return length > 0 ? nrVec3f(x / length, y / length, z / length) : nrVec3f(x, y, z);
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
  if (faces < 0) faces = 0;
  nrGLAttr coords;
  coordSet->getGLAttr(coords);
  int coordCount = int(coordSet->getCount());

  long long total = 0;
  for (int f = 0; f < faces; ++f) {
    if (lengths[f] < 0) {
      vlDebugError::post("vlGeom::computeNorms", "Face %d has %d corners", f, lengths[f]);
      return;
    }
    total += lengths[f];
  }
  if (!index || total > indexCount) {
    vlDebugError::post("vlGeom::computeNorms", "%lld corners but %u coordinate indices", total, indexCount);
    return;
  }
  unsigned corners = unsigned(total);
  for (unsigned k = 0; k < corners; ++k)
    if (index[k] < 0 || index[k] >= coordCount) {
      vlDebugError::post("vlGeom::computeNorms", "Coordinate index %d out of range", index[k]);
      return;
    }

  // Each array is allocated once, zeroed, at its final size: on large sets
  // the first touches of memory dominate.

  // The position of each coordinate used (stored + 1): the coordinates are
  // queued in order of first use, which numbers the positions by first
  // appearance, and welded; until then positionOf counts the corners at each
  // coordinate, negated. Welding leaves the number of corners at each
  // position in groupEnd[p + 1]; the sums then give where each position's
  // corners start.
  unsigned maxPositions = corners < unsigned(coordCount) ? corners : unsigned(coordCount);
  nrIntArray positionArray(static_cast<unsigned>(coordCount)), groupEndArray(maxPositions + 1);
  int* positionOf = positionArray.getArray();
  int* groupEnd = groupEndArray.getArray();
  int positions;
  {
    PositionTable table(coords, maxPositions);
    int* queue = table.queue();
    int queued = 0;
    for (unsigned k = 0; k < corners; ++k) {
      int c = index[k];
      if (!positionOf[c]) queue[queued++] = c;
      --positionOf[c];
    }
    table.weld(queued, positionOf, groupEnd);
    positions = table.getCount();
  }
  for (int p = 0; p < positions; ++p) groupEnd[p + 1] += groupEnd[p];

  // Face normals, and each position's corners in walk order (the fill moves
  // groupEnd[p] from the group's start to its end). Until a corner gets its
  // normal number, its slot in the normal index set holds its face.
  nrIndexSet* normalIndexSet = set->useNormalIndexSet(int(corners));
  int* cornerNormal = normalIndexSet->edit();
  nrVec3fArray faceNormalArray(static_cast<unsigned>(faces));
  nrIntArray groupArray(corners);
  nrVec3f* faceNormal = faceNormalArray.getArray();
  int* groups = groupArray.getArray();
  auto coordOf = [&](int k) { return reinterpret_cast<const float*>(coords.data + coords.stride * index[k]); };
  for (int f = 0, k = 0; f < faces; ++f) {
    int len = lengths[f];
    // A face with fewer than three corners has no plane: its normal stays zero,
    // which adds nothing to the averages it joins.
    if (len >= 3) {
      const float *p0 = coordOf(k), *p1 = coordOf(k + 1), *p2 = coordOf(k + 2);
      float a[3] = {p1[0] - p0[0], p1[1] - p0[1], p1[2] - p0[2]};
      float b[3] = {p2[0] - p0[0], p2[1] - p0[1], p2[2] - p0[2]};
      faceNormal[f] = unit(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]);
    }
    for (int end = k + len; k < end; ++k) {
      groups[groupEnd[positionOf[index[k]] - 1]++] = k;
      cornerNormal[k] = f;
    }
  }

  // Each position's corners group around a seed: a later corner joins when
  // its face normal is within the crease of the seed's, and leaves the list
  // (the last one moving into its place).
  float q = std::cos(creaseAngle);
  // Normals go straight into the new set, which grows where creases need
  // more than one per position, in steps small enough that little of it is
  // left unused (large blocks grow without copying).
  unsigned room = maxPositions, step = maxPositions / 8 + 16;
  nrNormalSet3f* normalSet = new nrNormalSet3f(int(room));
  nrVec3f* normals = normalSet->edit();
  unsigned m = 0;
  for (int p = 0, begin = 0; p < positions; begin = groupEnd[p++]) {
    int* group = groups + begin;
    int count = groupEnd[p] - begin;
    for (int seed = 0; seed < count; ++seed, ++m) {
      const nrVec3f n0 = faceNormal[cornerNormal[group[seed]]];
      cornerNormal[group[seed]] = int(m);
      float sum[3] = {n0[0], n0[1], n0[2]};
      int joined = 1;
      for (int j = seed + 1; j < count;) {
        const nrVec3f& n = faceNormal[cornerNormal[group[j]]];
        if (n.dot(n0) > q) {
          sum[0] += n[0];
          sum[1] += n[1];
          sum[2] += n[2];
          ++joined;
          cornerNormal[group[j]] = int(m);
          group[j] = group[--count];
        } else {
          ++j;
        }
      }
      if (m == room) {
        normalSet->setCount(room += step);
        normals = normalSet->edit();
      }
      // The mean, divided in double precision and rounded once, equals the
      // single-precision quotient; divided as floats the compiler packs the
      // three into one vector division whose unused lanes hit a slow path.
      double divisor = joined;
      normals[m] = unit(float(sum[0] / divisor), float(sum[1] / divisor), float(sum[2] / divisor));
    }
  }
  normalSet->setCount(m);
  normalIndexSet->changed();
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
