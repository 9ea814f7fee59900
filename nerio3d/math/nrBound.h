// Abstract bounding volume; the box and sphere implement what suits them, and
// the rest only warns (a box is never extended by a sphere, nor the reverse).
#pragma once

class nrBoxBound;
class nrSeg;
class nrSphereBound;
class nrVec3f;

class nrBound {
 public:
  virtual void makeEmpty() = 0;
  virtual int isEmpty() const = 0;
  virtual void around(const nrBoxBound* box);
  virtual void around(const nrSphereBound* sph);
  // Arrays of bounds skip null and empty members.
  virtual void around(const nrBoxBound* boxes[], int n);
  virtual void around(const nrSphereBound* sphs[], int n);
  // Lists of const pointers, or of bounds the caller may change, take the same
  // path (the list itself is only read).
  void around(const nrBoxBound* const boxes[], int n) { around(const_cast<const nrBoxBound**>(boxes), n); }
  void around(const nrSphereBound* const sphs[], int n) { around(const_cast<const nrSphereBound**>(sphs), n); }
  virtual void around(const nrVec3f pts[], int n);
  virtual void extendBy(const nrSphereBound* sph);
  virtual void extendBy(const nrBoxBound* box);
  virtual void extendBy(const nrVec3f& pt) = 0;
  // 1 when the argument lies entirely within this bound, else 0.
  virtual int contains(const nrSphereBound* sph) const;
  virtual int contains(const nrBoxBound* box) const;
  virtual int contains(const nrVec3f& pt) const = 0;
  // Returns 1 when seg meets the bound, with the entry and exit distances
  // along seg clipped to [0, length] (either pointer may be null), else 0.
  virtual int isect(const nrSeg* seg, float* tNear, float* tFar) const = 0;
  virtual ~nrBound() = default;

 protected:
  nrBound() = default;
  nrBound(const nrBound&) = default;
  nrBound& operator=(const nrBound&) = default;
};
