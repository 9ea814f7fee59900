#include "nerio3d/nodes/nrTransform.h"

#include <cmath>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/math/nrMatrix3f.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

namespace {

const float degreesPerRadian = 57.295776f;

float rowLength(const nrMatrix4f& m, int row) {
  return std::sqrt(m[row][0] * m[row][0] + m[row][1] * m[row][1] + m[row][2] * m[row][2]);
}

// A 3x3 part whose rows are orthogonal is a scale followed by a rotation (a
// mirror among them): its row lengths are the scale and its rows, so divided,
// the rotation. A reflection goes to the row whose removal leaves the
// rotation nearest the identity. Returns false for other matrices and for a
// zero row, which the singular value decomposition takes.
bool splitScaleRotation(const nrMatrix4f& m, float scale[3], float rot[3][3]) {
  double len[3];
  for (int i = 0; i < 3; ++i) {
    len[i] = rowLength(m, i);
    if (len[i] == 0) return false;
  }
  for (int i = 0; i < 3; ++i)
    for (int j = i + 1; j < 3; ++j) {
      double dot = double(m[i][0]) * m[j][0] + double(m[i][1]) * m[j][1] + double(m[i][2]) * m[j][2];
      if (std::fabs(dot) > nrEpsilon * len[i] * len[j]) return false;
    }
  double r[3][3];
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) r[i][j] = m[i][j] / len[i];
  double det = r[0][0] * (r[1][1] * r[2][2] - r[1][2] * r[2][1]) - r[0][1] * (r[1][0] * r[2][2] - r[1][2] * r[2][0]) +
               r[0][2] * (r[1][0] * r[2][1] - r[1][1] * r[2][0]);
  int mirrored = -1;
  if (det < 0) {
    mirrored = 0;
    for (int i = 1; i < 3; ++i)
      if (r[i][i] < r[mirrored][mirrored]) mirrored = i;
  }
  for (int i = 0; i < 3; ++i) {
    double sign = i == mirrored ? -1 : 1;
    scale[i] = float(sign * len[i]);
    for (int j = 0; j < 3; ++j) rot[i][j] = float(sign * r[i][j]);
  }
  return true;
}

}  // namespace

NR_DEFINE_TYPE(nrTransform, nrGroup, "Transform") {
  nrSFVec3f::addTypeField(type, "translation", TRANSLATION_FIELD, nrVec3f(0, 0, 0), &nrTransform::translation);
  nrSFRotation::addTypeField(type, "rotation", ROTATION_FIELD, nrRotation(), &nrTransform::rotation);
  nrSFVec3f::addTypeField(type, "scale", SCALE_FIELD, nrVec3f(1, 1, 1), &nrTransform::scale);
  nrSFRotation::addTypeField(type, "scaleOrientation", SCALE_ORIENTATION_FIELD, nrRotation(),
                             &nrTransform::scaleOrientation);
  nrSFVec3f::addTypeField(type, "center", CENTER_FIELD, nrVec3f(0, 0, 0), &nrTransform::center);
}

nrTransform::nrTransform(nrType* type) : nrGroup(type), kind(0), state(0), savedNormalize(0), normalizeSaved(0) {
  initFieldDefaults(getClassType());
  matrix.makeIdent();
}

nrTransform::~nrTransform() { destroyFieldContents(getClassType()); }

void nrTransform::getRot(const nrRotation& r, short index, float* x, float* y, float* z, float* angle) const {
  getVec(r.axis, index, x, y, z);
  *angle = r.angle;
}

void nrTransform::setMatrix(const nrMatrix4f& m) {
  matrix = m;
  state = (state & ~MATRIX_STALE) | PARTS_CHANGED;
  kind = SCALE_KIND | MATRIX_KIND;
  cleanParts();
  if (boundMode == DYNAMIC) {
    state |= SPHERE_STALE;
    propagateSideEffect(SPHERE_BOUND_FIELD);
  }
}

const nrMatrix4f& nrTransform::getMatrix() const {
  // Bringing the parts up to date and the matrix in line with them does not
  // change what the transform stands for.
  nrTransform* self = const_cast<nrTransform*>(this);
  for (short i = TRANSLATION_FIELD; i <= CENTER_FIELD; ++i) self->validateField(i);
  if (state & MATRIX_STALE) self->cleanMatrix();
  return matrix;
}

void nrTransform::cleanMatrix() {
  // Each step pre-multiplies, so the last one acts first on a point: -centre,
  // inverse scale orientation, scale, scale orientation, rotation, +centre,
  // translation.
  matrix.makeTrans(translation[0], translation[1], translation[2]);
  matrix.preTrans(center[0], center[1], center[2], matrix);
  const nrVec3f& r = rotation.axis;
  if (rotation.angle != 0) matrix.preRot(r[0], r[1], r[2], rotation.angle, matrix);
  const nrVec3f& so = scaleOrientation.axis;
  if (scaleOrientation.angle != 0) matrix.preRot(so[0], so[1], so[2], scaleOrientation.angle, matrix);
  matrix.preScale(scale[0], scale[1], scale[2], matrix);
  if (scaleOrientation.angle != 0) matrix.preRot(so[0], so[1], so[2], -scaleOrientation.angle, matrix);
  matrix.preTrans(-center[0], -center[1], -center[2], matrix);
  state &= ~MATRIX_STALE;
}

void nrTransform::cleanParts() {
  // Most matrices have no scale orientation: they come apart exactly, where
  // the decomposition below would pick one of its equivalent answers (a scale
  // of (2, 3, 4) read back as (4, 3, 2) turned a quarter about y). Otherwise
  // the 3x3 part is U * diag(w) * transpose(V) with U and V proper rotations:
  // the scale orientation is transpose(U), the rotation U * transpose(V), the
  // scale w. The singular values are positive except possibly the last, which
  // is negative when the matrix reflects: a reflection shows as a negative
  // scale along the scale orientation's third axis. The centre is zero.
  float s[3], r[3][3];
  translation.set(matrix[3][0], matrix[3][1], matrix[3][2]);
  if (splitScaleRotation(matrix, s, r)) {
    scale.set(s[0], s[1], s[2]);
    nrMatrix3f::getAxis(r, rotation.axis.vec, &rotation.angle);
    scaleOrientation = nrRotation();
  } else {
    float w[3][3], u[3][3], v[3][3], ut[3][3];
    for (int i = 0; i < 3; ++i)
      for (int j = 0; j < 3; ++j) w[i][j] = r[i][j] = matrix[i][j];
    nrMatrix3f::svd(w, u, v);
    nrMatrix3f::cleanSvd(r, u, v);
    for (int i = 0; i < 3; ++i)
      for (int j = 0; j < 3; ++j) ut[i][j] = u[j][i];
    scale.set(w[0][0], w[1][1], w[2][2]);
    nrMatrix3f::getAxis(r, rotation.axis.vec, &rotation.angle);
    nrMatrix3f::getAxis(ut, scaleOrientation.axis.vec, &scaleOrientation.angle);
  }
  center.set(0, 0, 0);
  state &= ~PARTS_STALE;
}

int nrTransform::scaleKind() const {
  if (scale == nrVec3f(1, 1, 1)) return 0;
  if (scale[0] == scale[1] && scale[1] == scale[2] && scaleOrientation.angle == 0) return UNIFORM_SCALE_KIND;
  return SCALE_KIND;
}

void nrTransform::fieldChanged(short index) {
  if (index < TRANSLATION_FIELD || index > CENTER_FIELD) {
    // Back to DYNAMIC, parts set while STATIC count as well.
    if (index == CHILDREN_FIELD || (index == BOUND_MODE_FIELD && boundMode == DYNAMIC)) state |= CHILD_SPHERE_STALE;
    nrGroup::fieldChanged(index);
    return;
  }
  // A part set after setMatrix rebuilds the matrix from the parts: they are
  // classified afresh.
  if (kind & MATRIX_KIND) {
    kind = scaleKind() | (rotation.angle != 0 ? ROTATE_KIND : 0) |
           (translation != nrVec3f(0, 0, 0) || center != nrVec3f(0, 0, 0) ? TRANSLATE_KIND : 0);
  }
  state |= MATRIX_STALE | PARTS_CHANGED;
  switch (index) {
    case TRANSLATION_FIELD:
    case CENTER_FIELD:
      kind |= TRANSLATE_KIND;
      break;
    case ROTATION_FIELD:
      kind = rotation.angle != 0 ? kind | ROTATE_KIND : kind & ~ROTATE_KIND;
      break;
    case SCALE_FIELD:
      kind = (kind & ~(UNIFORM_SCALE_KIND | SCALE_KIND)) | scaleKind();
      break;
    default:
      // A new scale orientation alone leaves the scale's classification as it was.
      break;
  }
  if (boundMode == DYNAMIC) {
    state |= SPHERE_STALE;
    propagateSideEffect(SPHERE_BOUND_FIELD);
  }
  touchField(index);
}

void nrTransform::copy(nrContainer* from, nrCloneTable* table) {
  nrGroup::copy(from, table);
  if (!from || from == this) return;
  // From a plain group: the own sphere is found again from the new children.
  if (!from->isOfType(getClassType())) {
    state |= CHILD_SPHERE_STALE;
    return;
  }
  // The matrix may have been set as it is (setMatrix): it is taken over rather
  // than rebuilt from the parts. The children's sphere is found again when
  // the node's own is next recomputed.
  nrTransform* source = static_cast<nrTransform*>(from);
  matrix = source->matrix;
  kind = source->kind;
  state = source->state | CHILD_SPHERE_STALE;
}

void nrTransform::childChanged(nrContainer* child, short index) {
  if (index == SPHERE_BOUND_FIELD) state |= CHILD_SPHERE_STALE;
  nrGroup::childChanged(child, index);
}

void nrTransform::cleanSideEffect(short index) {
  if (index != SPHERE_BOUND_FIELD) {
    nrGroup::cleanSideEffect(index);
    return;
  }
  takeRoutedInputs();
  if (state & CHILD_SPHERE_STALE) {
    calcChildrenBound(childSphere);
    state = (state & ~CHILD_SPHERE_STALE) | SPHERE_STALE;
  }
  if (state & SPHERE_STALE) {
    if (state & MATRIX_STALE) cleanMatrix();
    float grow = 1;
    if (kind & UNIFORM_SCALE_KIND) grow = rowLength(matrix, 0);
    if (childSphere.isEmpty()) {
      sphereBound.makeEmpty();
    } else if (kind & SCALE_KIND) {
      // The longest row falls short of the stretch of a scale along turned axes.
      sphereBound.xform(&childSphere, matrix);
    } else {
      sphereBound.center.xformPt(childSphere.center, matrix);
      sphereBound.radius = childSphere.radius * grow;
    }
    state &= ~SPHERE_STALE;
  }
  touchField(SPHERE_BOUND_FIELD);
}

nrTransform::PathEnum nrTransform::transformPushMatrix(nrTransformAction* action) {
  if (kind == 0 || !action->pushMatrix()) return NO_PATH;
  nrMatrix4f* top = action->getMatStack()->getTop();
  if (kind == TRANSLATE_KIND && !(state & PARTS_STALE)) {
    top->preTrans(translation[0], translation[1], translation[2], *top);
    return TRANSLATE_PATH;
  }
  if (kind == ROTATE_KIND && !(state & PARTS_STALE)) {
    const nrVec3f& a = rotation.axis;
    top->preRot(a[0], a[1], a[2], rotation.angle, *top);
    return ROTATE_PATH;
  }
  if (state & MATRIX_STALE) cleanMatrix();
  top->preMult(matrix);
  // A uniform scale still counts as free of scaling (the cull test handles it),
  // unless a level below already scales unevenly.
  action->topScaleFlag() |= kind & SCALE_KIND;
  return MATRIX_PATH;
}

int nrTransform::drawPushMatrix(nrDrawAction* action) {
  PathEnum path = transformPushMatrix(action);
  if (path == NO_PATH) return 0;
  nrgl::PushMatrix();
  if (path == TRANSLATE_PATH) {
    nrgl::Translatef(translation[0], translation[1], translation[2]);
  } else if (path == ROTATE_PATH) {
    const nrVec3f& a = rotation.axis;
    nrgl::Rotatef(rotation.angle * degreesPerRadian, a[0], a[1], a[2]);
  } else {
    nrContext* context = action->getContext();
    if (context && (kind & (UNIFORM_SCALE_KIND | SCALE_KIND))) {
      savedNormalize = context->getNormalizeEnable();
      normalizeSaved = 1;
      context->setNormalizeEnable(1);
    }
    nrgl::MultMatrixf(&matrix[0][0]);
  }
  return 1;
}

nrTravDirective nrTransform::transformVisit(nrTransformAction* action) {
  cleanPendingFields();
  return placedTraverse(action, &nrNode::transformVisit);
}

nrTravDirective nrTransform::vfCullVisit(nrVFCullAction* action) {
  cleanPendingFields();
  nrTravDirective d = action->pushCull(sphereBound) ? placedTraverse(action, &nrNode::vfCullVisit) : PRUNE_TRAV;
  action->popCull();
  return d;
}

nrTravDirective nrTransform::drawVisit(nrDrawAction* action) {
  cleanPendingFields();
  nrTravDirective d = PRUNE_TRAV;
  if (action->pushCull(sphereBound)) {
    d = action->preVisit(this);
    if (d == CONTINUE_TRAV) {
      int pushed = drawPushMatrix(action);
      nrVec3f viewVector = action->getViewVector();
      action->updateViewVector();
      d = visitChildren(action, &nrNode::drawVisit);
      if (normalizeSaved) {
        action->getContext()->setNormalizeEnable(savedNormalize);
        normalizeSaved = 0;
      }
      if (pushed) {
        action->popMatrix();
        action->setViewVector(viewVector);
        nrgl::PopMatrix();
      }
    }
    d = nrTravCombine(d, action->postVisit(this));
  }
  action->popCull();
  return d;
}

void nrTransform::isect(nrIsectAction* action) {
  cleanPendingFields();
  if (!sphereBound.isect(&action->getSeg(), nullptr, nullptr)) return;
  if (kind == 0) {
    isectChildren(action);
    return;
  }
  if (state & MATRIX_STALE) cleanMatrix();
  if (!action->pushXform(matrix)) return;
  isectChildren(action);
  action->popXform();
}
