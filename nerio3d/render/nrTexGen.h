// Texture-coordinate generation for the four coordinates S, T, R and Q.
#pragma once

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/math/nrVec4f.h"

class nrContext;

class nrTexGen : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrTexGen)

  // Int-based, as the mode fields are: a mode read from a file outside the
  // list is held as it is and sends OpenGL no generation mode.
  enum ModeEnum : int { OFF, EYE_LINEAR, EYE_LINEAR_IDENT, OBJECT_LINEAR, SPHERE_MAP };
  enum { MODE_S, MODE_T, MODE_R, MODE_Q, PLANE_S, PLANE_T, PLANE_R, PLANE_Q };

  nrTexGen() : nrTexGen(getClassType()) {}
  explicit nrTexGen(nrType* type);
  ~nrTexGen() override;

  void setModeS(ModeEnum mode) { setMode(MODE_S, mode); }
  void setModeT(ModeEnum mode) { setMode(MODE_T, mode); }
  void setModeR(ModeEnum mode) { setMode(MODE_R, mode); }
  void setModeQ(ModeEnum mode) { setMode(MODE_Q, mode); }
  ModeEnum getModeS() const { return static_cast<ModeEnum>(getFieldValue(modeS, MODE_S)); }
  ModeEnum getModeT() const { return static_cast<ModeEnum>(getFieldValue(modeT, MODE_T)); }
  ModeEnum getModeR() const { return static_cast<ModeEnum>(getFieldValue(modeR, MODE_R)); }
  ModeEnum getModeQ() const { return static_cast<ModeEnum>(getFieldValue(modeQ, MODE_Q)); }

  void setPlaneS(float a, float b, float c, float d) { setPlane(PLANE_S, a, b, c, d); }
  void setPlaneT(float a, float b, float c, float d) { setPlane(PLANE_T, a, b, c, d); }
  void setPlaneR(float a, float b, float c, float d) { setPlane(PLANE_R, a, b, c, d); }
  void setPlaneQ(float a, float b, float c, float d) { setPlane(PLANE_Q, a, b, c, d); }
  void getPlaneS(float* a, float* b, float* c, float* d) const { getPlane(PLANE_S, a, b, c, d); }
  void getPlaneT(float* a, float* b, float* c, float* d) const { getPlane(PLANE_T, a, b, c, d); }
  void getPlaneR(float* a, float* b, float* c, float* d) const { getPlane(PLANE_R, a, b, c, d); }
  void getPlaneQ(float* a, float* b, float* c, float* d) const { getPlane(PLANE_Q, a, b, c, d); }
  const nrVec4f& getPlaneS() const { return getFieldValue(planeS, PLANE_S); }
  const nrVec4f& getPlaneT() const { return getFieldValue(planeT, PLANE_T); }
  const nrVec4f& getPlaneR() const { return getFieldValue(planeR, PLANE_R); }
  const nrVec4f& getPlaneQ() const { return getFieldValue(planeQ, PLANE_Q); }
  void setPlaneS(const nrVec4f& p) { setPlane(PLANE_S, p[0], p[1], p[2], p[3]); }
  void setPlaneT(const nrVec4f& p) { setPlane(PLANE_T, p[0], p[1], p[2], p[3]); }
  void setPlaneR(const nrVec4f& p) { setPlane(PLANE_R, p[0], p[1], p[2], p[3]); }
  void setPlaneQ(const nrVec4f& p) { setPlane(PLANE_Q, p[0], p[1], p[2], p[3]); }
  void getPlaneS(nrVec4f& p) const { p = getPlaneS(); }
  void getPlaneT(nrVec4f& p) const { p = getPlaneT(); }
  void getPlaneR(nrVec4f& p) const { p = getPlaneR(); }
  void getPlaneQ(nrVec4f& p) const { p = getPlaneQ(); }

  // The generator's id in the id space shared by all contexts, and its change counter.
  int getId() const { return id; }
  int getVersion() const { return version; }
  void fieldChanged(short index) override;
  // Copied values count as a change, as set ones do.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;

 protected:
  friend class nrContext;
  // Sends the generation modes and planes to OpenGL.
  virtual void draw(nrContext* context);

 private:
  void setMode(short coord, ModeEnum value);
  void setPlane(short index, float a, float b, float c, float d);
  void getPlane(short index, float* a, float* b, float* c, float* d) const;

  // The fields of coordinate S, T, R or Q by its number.
  static int nrTexGen::*const modes[4];
  static nrVec4f nrTexGen::*const planes[4];

  int modeS, modeT, modeR, modeQ;
  nrVec4f planeS, planeT, planeR, planeQ;
  int id;
  int version;
};
