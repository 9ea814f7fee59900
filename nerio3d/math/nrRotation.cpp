#include "nerio3d/math/nrRotation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/math/nrTolerance.h"

void nrRotation::makeQuat(nrVec4f& q) const {
  nrVec3f n = axis;
  n.normalize();
  float s = std::sin(0.5f * angle);
  q.set(n[0] * s, n[1] * s, n[2] * s, std::cos(0.5f * angle));
}

void nrRotation::setQuat(const nrVec4f& q) {
  float len = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2]);
  if (len < nrEpsilon) {
    set(0.0f, 0.0f, 1.0f, 0.0f);
    return;
  }
  angle = 2.0f * std::acos(std::clamp(q[3], -1.0f, 1.0f));
  axis.set(q[0] / len, q[1] / len, q[2] / len);
}

void nrRotation::mult(const nrRotation& a, const nrRotation& b) {
  nrVec4f p, q;
  a.makeQuat(p);
  b.makeQuat(q);
  // Hamilton product q * p: p acts first.
  nrVec4f r(q[3] * p[0] + q[0] * p[3] + q[1] * p[2] - q[2] * p[1],
            q[3] * p[1] - q[0] * p[2] + q[1] * p[3] + q[2] * p[0],
            q[3] * p[2] + q[0] * p[1] - q[1] * p[0] + q[2] * p[3],
            q[3] * p[3] - q[0] * p[0] - q[1] * p[1] - q[2] * p[2]);
  r.normalize();
  setQuat(r);
}

void nrRotation::invert(const nrRotation& r) {
  axis = r.axis;
  angle = -r.angle;
}

void nrRotation::slerp(float t, const nrRotation& a, const nrRotation& b) {
  nrVec4f p, q;
  a.makeQuat(p);
  b.makeQuat(q);
  float c = p.dot(q);
  // q and -q are the same rotation; taking the one nearer p gives the shorter
  // arc and keeps the angle between the quaternions at most 90 degrees, so the
  // half-turn case needs no special axis. When both ways are a half turn (c is
  // 0 but for rounding, as for keys 0 and 3.14159), q is kept: the rotation
  // turns the way its keys are written.
  if (c < -1e-6f) {
    q.set(-q[0], -q[1], -q[2], -q[3]);
    c = -c;
  }
  float wp, wq;
  if (c > 0.9995f) {
    // Nearly equal rotations: sin(theta) vanishes, so interpolate linearly and
    // renormalise, which agrees with slerp to float precision there.
    wp = 1.0f - t;
    wq = t;
  } else {
    float theta = std::acos(c);
    float s = std::sin(theta);
    wp = std::sin((1.0f - t) * theta) / s;
    wq = std::sin(t * theta) / s;
  }
  nrVec4f r(wp * p[0] + wq * q[0], wp * p[1] + wq * q[1], wp * p[2] + wq * q[2],
            wp * p[3] + wq * q[3]);
  r.normalize();
  setQuat(r);
}

void nrRotation::write(nrOutput* out) const {
  if (!out || !out->getStream()) return;
  fprintf(out->getStream(), "%g %g %g %g", axis[0], axis[1], axis[2], angle);
}
