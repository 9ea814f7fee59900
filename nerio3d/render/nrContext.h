// The graphics context: wraps one OpenGL context, keeps a shadow of every render
// state it manages and is the only path by which the library changes that state.
#pragma once

#include "nerio3d/core/nrBitMask.h"
#include "nerio3d/core/nrObject.h"
#include "nerio3d/math/nrMatrix4f.h"
#include "nerio3d/math/nrVec4f.h"
#include "nerio3d/math/nrVec4ub.h"
#include "nerio3d/platform/nrDrawable.h"

class nrAppearance;
class nrFog;
class nrIntArray;
class nrLight;
class nrMaterial;
class nrOverrideGeoProp;
class nrPtrArray;
class nrTexGen;
class nrTexture;
class nrWindow;
struct _nrGfx;

class nrContext : public nrObject {
  NR_DECLARE_TYPE(nrContext)

  // The state enumerations are int-based, as the appearance fields that hold
  // them are: a value from a file or the field interface outside its list
  // reaches the setter, which refuses it with a message (the material mode
  // takes any value but 0 as on).
  enum TexModeEnum : int { FAST_TEX, NICE_TEX, NON_PERSP_TEX, PERSP_TEX };
  enum TexEnvEnum : int { MODULATE_TENV, BLEND_TENV, REPLACE_TENV, ADD_TENV, DECAL_TENV };
  enum ShadeModelEnum : int { FLAT_SHADE, SMOOTH_SHADE };
  enum TranspModeEnum : int { FAST_TRANSP, NICE_TRANSP, BLEND_TRANSP, SCREEN_DOOR_TRANSP };
  enum AlphaFuncEnum : int {
    NEVER_AFUNC,
    LESS_AFUNC,
    EQUAL_AFUNC,
    LEQUAL_AFUNC,
    GREATER_AFUNC,
    NOTEQUAL_AFUNC,
    GEQUAL_AFUNC,
    ALWAYS_AFUNC
  };
  enum SrcBlendFuncEnum : int {
    ZERO_SBLEND,
    ONE_SBLEND,
    DST_COLOR_SBLEND,
    ONE_MINUS_DST_COLOR_SBLEND,
    SRC_ALPHA_SATURATE_SBLEND,
    SRC_ALPHA_SBLEND,
    ONE_MINUS_SRC_ALPHA_SBLEND,
    DST_ALPHA_SBLEND,
    ONE_MINUS_DST_ALPHA_SBLEND
  };
  enum DstBlendFuncEnum : int {
    ZERO_DBLEND,
    ONE_DBLEND,
    SRC_COLOR_DBLEND,
    ONE_MINUS_SRC_COLOR_DBLEND,
    SRC_ALPHA_DBLEND,
    ONE_MINUS_SRC_ALPHA_DBLEND,
    DST_ALPHA_DBLEND,
    ONE_MINUS_DST_ALPHA_DBLEND
  };
  enum DepthFuncEnum : int {
    NEVER_DFUNC,
    LESS_DFUNC,
    EQUAL_DFUNC,
    LEQUAL_DFUNC,
    GREATER_DFUNC,
    NOTEQUAL_DFUNC,
    GEQUAL_DFUNC,
    ALWAYS_DFUNC
  };
  enum PolyModeEnum : int { POINT_PMODE, LINE_PMODE, FILL_PMODE };
  // Int-based because a popped geometry-property override leaves -1 in the
  // shadow, a value no set can match.
  enum CullFaceEnum : int { NO_CULL, FRONT_CULL, BACK_CULL, BOTH_CULL };
  enum MaterialModeEnum : int { NO_COLOR_MATERIAL, COLOR_MATERIAL };
  enum ColorModeEnum { RGBA_CMODE, INDEX_CMODE };

  // Flags of clear().
  enum { COLOR_CLEAR = 1, DEPTH_CLEAR = 2 };

  // Creates an OpenGL context for drawable; it becomes current with makeCurrent.
  explicit nrContext(nrDrawable* drawable);
  nrContext(nrDrawable* drawable, nrType* type);
  ~nrContext() override;

  static nrContext* getCurrent();
  void makeCurrent(nrDrawable* drawable);
  // On the window's drawable; null, or a window without one, is ignored.
  void makeCurrent(nrWindow* window);
  static void releaseCurrent();
  // The drawable this context was last made current on; null once a deleted
  // window took it.
  nrDrawable* getDrawable() const { return drawable; }
  ColorModeEnum getColorMode() const { return colorMode; }

  void setViewport(int x, int y, int w, int h);
  void getViewport(int& x, int& y, int& w, int& h) const;
  void clear(int flags);
  void clear(int flags, float r, float g, float b, float a);

  // One setter per state element. Each records the value as application state
  // (outside drawApp and popState) and reaches OpenGL only when the value
  // differs from what OpenGL holds.
  void setTexture(nrTexture* texture);
  void setTexEnable(unsigned char on);
  void setTexMode(TexModeEnum mode);
  void setTexBlendColor(const nrVec4f& color);
  void setTexEnv(TexEnvEnum env);
  void setTexGen(nrTexGen* texGen);
  void setTexGenEnable(unsigned char on);
  void setLightEnable(unsigned char on);
  void setShadeModel(ShadeModelEnum model);
  void setTranspEnable(unsigned char on);
  void setTranspMode(TranspModeEnum mode);
  void setAlphaFunc(AlphaFuncEnum func);
  void setAlphaRef(float ref);
  void setBlendColor(const nrVec4f& color);
  void setSrcBlendFunc(SrcBlendFuncEnum func);
  void setDstBlendFunc(DstBlendFuncEnum func);
  void setColorMask(const nrVec4ub& mask);
  void setDepthEnable(unsigned char on);
  void setDepthFunc(DepthFuncEnum func);
  void setDepthMask(unsigned char on);
  void setFogEnable(unsigned char on);
  void setPolyMode(PolyModeEnum mode);
  void setCullFace(CullFaceEnum face);
  void setLineWidth(float width);
  void setPointSize(float size);
  void setLineStipplePattern(unsigned int pattern);
  void setLineStippleFactor(unsigned int factor);
  void setTexTransform(const nrMatrix4f& matrix);
  void setMaterial(nrMaterial* material);
  void setBackMaterial(nrMaterial* material);
  void setMaterialModeEnable(int mode);

  // While recording is off, set calls change OpenGL and the shadow but are not
  // remembered as application state; geometry switches it off around its own sets.
  void setRecordEnable(unsigned char on) { recordTarget = on ? global : top; }
  unsigned char getRecordEnable() const { return recordTarget == global; }

  // Cached but never recorded as application state.
  void setNormalizeEnable(unsigned char on);
  unsigned char getNormalizeEnable() const { return normalizeEnable; }
  void setLocalViewer(unsigned char on);

  // Sends the lighting material of face (nrMaterial::FRONT_FACE or BACK_FACE):
  // colours in the order ambient, diffuse, specular, emissive, each RGBA, then
  // shininess on OpenGL's 0-128 scale. Each value reaches OpenGL only when
  // OpenGL does not hold it already (materials of one scene often share all but
  // their diffuse colour); the context assumes it alone sets OpenGL materials.
  void sendMaterialValues(int face, const float (&colors)[4][4], float shininess);

  // Client vertex arrays enabled in OpenGL, a bit per kind (CLIENT_COLOR_ARRAY
  // ...); geometry enables what it draws with and the rest is switched off.
  enum { CLIENT_COLOR_ARRAY = 1, CLIENT_NORMAL_ARRAY = 2, CLIENT_TEX_COORD_ARRAY = 4, CLIENT_VERTEX_ARRAY = 8 };
  void setClientArrays(unsigned arrays);

  // What OpenGL currently holds (the top of the shadow stack), and what the
  // application set directly on the context.
  const _nrGfx& getShadowState() const { return *top; }
  const _nrGfx& getGlobalState() const { return *global; }

  void pushState();
  void popState();

  // Applies app, or the application's own state when app is null, changing only
  // what differs from the previously applied appearance. The draw action and
  // shapes call it; nrAppearance::draw goes through it.
  void drawApp(nrAppearance* app, unsigned char force);

  void pushLights();
  void popLights();
  nrLight* getLight(int slot) const;
  // The OpenGL light slot for light placed with matrix, or -1 when all eight
  // slots hold enabled lights. sameIndex is the slot too when the light already
  // sits there unchanged, so its parameters need not be sent again; else -1.
  int getLightTarget(nrLight* light, const nrMatrix4f& matrix, int& sameIndex);
  // The same with sameIndex given by address, as C callers write it; null skips it.
  int getLightTarget(nrLight* light, const nrMatrix4f& matrix, int* sameIndex) {
    int same = 0;
    int slot = getLightTarget(light, matrix, same);
    if (sameIndex) *sameIndex = same;
    return slot;
  }
  void disableLightTargets();
  static void disableLight(nrLight* light);

  void pushFog(nrFog* fog);
  void popFog();
  // Applies fog's on state while the application has fog enabled; returns
  // whether this fog is to be drawn.
  unsigned char syncFogState(nrFog* fog);

  void pushOverrideAppearance(nrAppearance* app);
  nrAppearance* popOverrideAppearance();
  void pushOverrideGeoProp(nrOverrideGeoProp* prop);
  nrOverrideGeoProp* popOverrideGeoProp();

  // Drops object (a texture, texture generator or material being destroyed)
  // from the records of every context, so that no later set or pop reaches it;
  // a context last made current on a drawable being destroyed keeps none.
  static void forget(const void* object);

  // Display lists and texture objects of all contexts share one id space.
  static int newId(int count);
  static void freeId(int first, int count);
  // True (and remembered) when this context has not yet seen version of id.
  int isDirty(int id, int version);

  // Audio ports do not exist on this platform; each call reports that.
  static void initSound();
  static bool isSoundInitialized() { return soundInitialized; }

 private:
  enum { STACK_DEPTH = 16, LIGHT_SLOTS = 8, OVERRIDE_DEPTH = 16 };

  struct LightSlot {
    unsigned char assigned;
    unsigned char enabled;
    nrLight* light;
    nrMatrix4f matrix;
  };

  void init(nrDrawable* drawable);
  // The fog stack's top entry, taken off (null when only the bottom one is
  // left), and the fog below it given back to OpenGL once that entry is gone.
  nrFog* takeTopFog();
  void restoreFogBelow(nrFog* dropped);

  // The set rule, written once for every element.
  template <typename T>
  void record(int elt, T _nrGfx::*member, const T& value);
  template <typename T>
  bool change(int elt, T _nrGfx::*member, const T& value);
  template <typename T>
  bool set(int elt, T _nrGfx::*member, const T& value) {
    record(elt, member, value);
    return change(elt, member, value);
  }

  void setStateElts(const nrBitMask& mask, const _nrGfx& gfx);
  void setBlendFuncs(SrcBlendFuncEnum src, DstBlendFuncEnum dst);
  void applySrcBlendFunc(SrcBlendFuncEnum func, bool mark);
  void applyDstBlendFunc(DstBlendFuncEnum func, bool mark);
  void applyTransparency(TranspModeEnum mode, bool on);
  void applyFogEnable(unsigned char on);
  void enableLightSlot(int slot, unsigned char on);
  void sendMaterial(nrMaterial* material, int face);
  const nrOverrideGeoProp* activeGeoOverride(int elt) const;

  nrDrawable::GLContext* glContext;
  bool current;
  nrDrawable* drawable;
  ColorModeEnum colorMode;

  int viewport[4];
  bool viewportRead;

  _nrGfx* stack;
  _nrGfx* top;
  _nrGfx* global;
  _nrGfx* recordTarget;
  int depth;
  // Pushes refused past the last level; each is undone by the next pop instead.
  int refusedStatePushes;
  bool globalChanged;

  nrAppearance* lastApp;
  // The last one applied was a merge with an override appearance.
  bool lastMerged;
  nrBitMask lastInherit;
  // The last applied appearance of each level below the top, held, taken
  // back by the pop that returns to that level.
  struct AppliedApp {
    nrAppearance* app;
    bool merged;
    nrBitMask inherit;
  };
  AppliedApp appliedBelow[STACK_DEPTH];
  nrAppearance* defaultApp;

  LightSlot lights[STACK_DEPTH][LIGHT_SLOTS];
  int lightLevel;
  int refusedLightPushes;

  nrPtrArray* fogStack;

  nrAppearance* overrideApps[OVERRIDE_DEPTH];
  int overrideAppTop;
  nrOverrideGeoProp* overrideGeoProps[OVERRIDE_DEPTH];
  int overrideGeoPropTop;

  unsigned char normalizeEnable;
  unsigned char localViewer;
  // The material values OpenGL holds, per face: the four colours, then the
  // shininess in element 0 of row 4. While colour tracking is on it rewrites
  // ambient and diffuse, so those are not known then.
  float heldMaterial[2][5][4];
  bool heldMaterialKnown[2][5];
  unsigned clientArrays;

  nrIntArray* versions;

  static nrPtrArray* contexts;
  static nrIntArray* freeIds;
  static int nextId;
  static bool soundInitialized;
};
