#include "nerio3d/render/nrMaterial.h"

#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

GLubyte nrMaterial::_ditherMatrix[DITHER_PATTERNS][DITHER_PATTERN_BYTES];

namespace {

enum { DITHER_ORDER = 5, DITHER_SIZE = 1 << DITHER_ORDER };

// Rank of pixel (row, col) in a recursive ordered dither of size 32: the bits
// of row XOR col and of row interleaved, most significant level last, so that
// every 2 x 2 block is filled before the next one at each scale.
int ditherRank(int row, int col) {
  int rank = 0;
  for (int level = 0; level < DITHER_ORDER; ++level) {
    int shift = 2 * (DITHER_ORDER - 1 - level);
    rank |= (((row ^ col) >> level) & 1) << (shift + 1);
    rank |= ((row >> level) & 1) << shift;
  }
  return rank;
}

void buildDitherMatrix() {
  for (int k = 0; k < nrMaterial::DITHER_PATTERNS; ++k) {
    GLubyte* pattern = nrMaterial::_ditherMatrix[k];
    for (int row = 0; row < DITHER_SIZE; ++row)
      for (int col = 0; col < DITHER_SIZE; ++col)
        if (ditherRank(row, col) < k) pattern[row * 4 + col / 8] |= 0x80 >> (col % 8);
  }
}

}  // namespace

NR_DEFINE_TYPE(nrMaterial, nrContainer, "Material") {
  nrSFFloat::addTypeField(type, "ambientIntensity", AMBIENT_INTENSITY, 0.2f, &nrMaterial::ambientIntensity);
  nrSFVec3f::addTypeField(type, "ambientColor", AMBIENT_COLOR, nrVec3f(0.16f, 0.16f, 0.16f), &nrMaterial::ambientColor);
  nrSFVec3f::addTypeField(type, "diffuseColor", DIFFUSE_COLOR, nrVec3f(0.8f, 0.8f, 0.8f), &nrMaterial::diffuseColor);
  nrSFVec3f::addTypeField(type, "specularColor", SPECULAR_COLOR, nrVec3f(0, 0, 0), &nrMaterial::specularColor);
  nrSFVec3f::addTypeField(type, "emissiveColor", EMISSIVE_COLOR, nrVec3f(0, 0, 0), &nrMaterial::emissiveColor);
  nrSFShort::addTypeField(type, "ambientIndex", AMBIENT_INDEX, 0, &nrMaterial::ambientIndex);
  nrSFShort::addTypeField(type, "diffuseIndex", DIFFUSE_INDEX, 0, &nrMaterial::diffuseIndex);
  nrSFShort::addTypeField(type, "specularIndex", SPECULAR_INDEX, 0, &nrMaterial::specularIndex);
  nrSFFloat::addTypeField(type, "shininess", SHININESS, 0.2f, &nrMaterial::shininess);
  nrSFFloat::addTypeField(type, "transparency", TRANSPARENCY, 0.0f, &nrMaterial::transparency);
  buildDitherMatrix();
}

nrMaterial::nrMaterial(nrType* type) : nrContainer(type), id(nrContext::newId(1)), version(1) {
  initFieldDefaults(classType);
}

nrMaterial::~nrMaterial() { nrContext::forget(this); }

void nrMaterial::write(nrOutput* out) {
  writeFields(out, {AMBIENT_INTENSITY, DIFFUSE_COLOR, SPECULAR_COLOR, EMISSIVE_COLOR, AMBIENT_INDEX, DIFFUSE_INDEX,
                    SPECULAR_INDEX, SHININESS, TRANSPARENCY});
}

// The ambient colour is the ambient intensity times the diffuse colour; a set
// ambient colour keeps its value and gives the intensity of its projection on
// the diffuse colour (0 on a black diffuse colour).
void nrMaterial::fieldChanged(short index) {
  if (index == AMBIENT_INTENSITY || index == DIFFUSE_COLOR) {
    ambientColor.scale(ambientIntensity, diffuseColor);
  } else if (index == AMBIENT_COLOR) {
    float d2 = diffuseColor.dot(diffuseColor);
    ambientIntensity = d2 > 0 ? ambientColor.dot(diffuseColor) / d2 : 0;
  }
  ++version;
  nrContainer::fieldChanged(index);
}

void nrMaterial::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  ++version;
}

int nrMaterial::ditherPattern(float transparency) {
  // A transparency that is not a number draws solid, as 0 does.
  if (!(transparency > 0)) transparency = 0;
  if (transparency > 1) transparency = 1;
  return static_cast<int>((1 - transparency) * 1024 + 0.5f);
}

void nrMaterial::draw(FaceEnum face, nrContext* context) {
  // Values routed in since the last draw are taken first (they raise the version).
  cleanPendingFields();
  const _nrGfx& shadow = context->getShadowState();
  if (shadow.material != this && shadow.backMaterial != this && !context->isDirty(id, version)) return;
  GLenum glFace = face == BACK_FACE ? GL_BACK : GL_FRONT;
  if (context->getColorMode() == nrContext::INDEX_CMODE) {
    const GLint indexes[3] = {ambientIndex, diffuseIndex, specularIndex};
    nrgl::Materialiv(glFace, GL_COLOR_INDEXES, indexes);
    return;
  }
  float alpha = 1 - transparency;
  const float colors[4][4] = {{ambientColor[0], ambientColor[1], ambientColor[2], alpha},
                              {diffuseColor[0], diffuseColor[1], diffuseColor[2], alpha},
                              {specularColor[0], specularColor[1], specularColor[2], alpha},
                              {emissiveColor[0], emissiveColor[1], emissiveColor[2], alpha}};
  context->sendMaterialValues(face, colors, shininess * 128);
  if (shadow.transpEnable &&
      (shadow.transpMode == nrContext::FAST_TRANSP || shadow.transpMode == nrContext::SCREEN_DOOR_TRANSP))
    nrgl::PolygonStipple(_ditherMatrix[ditherPattern(transparency)]);
}
