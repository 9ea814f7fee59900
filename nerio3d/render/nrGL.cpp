#include "nerio3d/render/nrGL.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <type_traits>

namespace {

struct EnumName {
  GLenum value;
  const char* name;
};

// Where one value has several names, the first entry wins.
#define NRGL_ENUM(name) {name, #name},
const EnumName enumNames[] = {
    // errors
    NRGL_ENUM(GL_INVALID_ENUM) NRGL_ENUM(GL_INVALID_VALUE) NRGL_ENUM(GL_INVALID_OPERATION)
    NRGL_ENUM(GL_STACK_OVERFLOW) NRGL_ENUM(GL_STACK_UNDERFLOW) NRGL_ENUM(GL_OUT_OF_MEMORY)
    // comparison functions
    NRGL_ENUM(GL_NEVER) NRGL_ENUM(GL_LESS) NRGL_ENUM(GL_EQUAL) NRGL_ENUM(GL_LEQUAL)
    NRGL_ENUM(GL_GREATER) NRGL_ENUM(GL_NOTEQUAL) NRGL_ENUM(GL_GEQUAL) NRGL_ENUM(GL_ALWAYS)
    // blend factors
    NRGL_ENUM(GL_SRC_COLOR) NRGL_ENUM(GL_ONE_MINUS_SRC_COLOR) NRGL_ENUM(GL_SRC_ALPHA)
    NRGL_ENUM(GL_ONE_MINUS_SRC_ALPHA) NRGL_ENUM(GL_DST_ALPHA) NRGL_ENUM(GL_ONE_MINUS_DST_ALPHA)
    NRGL_ENUM(GL_DST_COLOR) NRGL_ENUM(GL_ONE_MINUS_DST_COLOR) NRGL_ENUM(GL_SRC_ALPHA_SATURATE)
    // buffers and faces
    NRGL_ENUM(GL_FRONT_LEFT) NRGL_ENUM(GL_FRONT_RIGHT) NRGL_ENUM(GL_BACK_LEFT) NRGL_ENUM(GL_BACK_RIGHT)
    NRGL_ENUM(GL_FRONT) NRGL_ENUM(GL_BACK) NRGL_ENUM(GL_LEFT) NRGL_ENUM(GL_RIGHT)
    NRGL_ENUM(GL_FRONT_AND_BACK) NRGL_ENUM(GL_CW) NRGL_ENUM(GL_CCW)
    // capabilities and queries
    NRGL_ENUM(GL_CURRENT_COLOR) NRGL_ENUM(GL_CURRENT_INDEX) NRGL_ENUM(GL_CURRENT_NORMAL)
    NRGL_ENUM(GL_CURRENT_TEXTURE_COORDS) NRGL_ENUM(GL_CURRENT_RASTER_POSITION)
    NRGL_ENUM(GL_POINT_SMOOTH) NRGL_ENUM(GL_POINT_SIZE) NRGL_ENUM(GL_LINE_SMOOTH) NRGL_ENUM(GL_LINE_WIDTH)
    NRGL_ENUM(GL_LINE_STIPPLE) NRGL_ENUM(GL_LINE_STIPPLE_PATTERN) NRGL_ENUM(GL_LINE_STIPPLE_REPEAT)
    NRGL_ENUM(GL_LIST_MODE) NRGL_ENUM(GL_LIST_BASE) NRGL_ENUM(GL_LIST_INDEX)
    NRGL_ENUM(GL_POLYGON_MODE) NRGL_ENUM(GL_POLYGON_SMOOTH) NRGL_ENUM(GL_POLYGON_STIPPLE)
    NRGL_ENUM(GL_EDGE_FLAG) NRGL_ENUM(GL_CULL_FACE) NRGL_ENUM(GL_CULL_FACE_MODE) NRGL_ENUM(GL_FRONT_FACE)
    NRGL_ENUM(GL_LIGHTING) NRGL_ENUM(GL_LIGHT_MODEL_LOCAL_VIEWER) NRGL_ENUM(GL_LIGHT_MODEL_TWO_SIDE)
    NRGL_ENUM(GL_LIGHT_MODEL_AMBIENT) NRGL_ENUM(GL_SHADE_MODEL) NRGL_ENUM(GL_COLOR_MATERIAL_FACE)
    NRGL_ENUM(GL_COLOR_MATERIAL_PARAMETER) NRGL_ENUM(GL_COLOR_MATERIAL)
    NRGL_ENUM(GL_FOG) NRGL_ENUM(GL_FOG_INDEX) NRGL_ENUM(GL_FOG_DENSITY) NRGL_ENUM(GL_FOG_START)
    NRGL_ENUM(GL_FOG_END) NRGL_ENUM(GL_FOG_MODE) NRGL_ENUM(GL_FOG_COLOR)
    NRGL_ENUM(GL_DEPTH_RANGE) NRGL_ENUM(GL_DEPTH_TEST) NRGL_ENUM(GL_DEPTH_WRITEMASK)
    NRGL_ENUM(GL_DEPTH_CLEAR_VALUE) NRGL_ENUM(GL_DEPTH_FUNC) NRGL_ENUM(GL_STENCIL_TEST)
    NRGL_ENUM(GL_MATRIX_MODE) NRGL_ENUM(GL_NORMALIZE) NRGL_ENUM(GL_VIEWPORT)
    NRGL_ENUM(GL_MODELVIEW_STACK_DEPTH) NRGL_ENUM(GL_PROJECTION_STACK_DEPTH) NRGL_ENUM(GL_TEXTURE_STACK_DEPTH)
    NRGL_ENUM(GL_MODELVIEW_MATRIX) NRGL_ENUM(GL_PROJECTION_MATRIX) NRGL_ENUM(GL_TEXTURE_MATRIX)
    NRGL_ENUM(GL_ATTRIB_STACK_DEPTH) NRGL_ENUM(GL_ALPHA_TEST) NRGL_ENUM(GL_ALPHA_TEST_FUNC)
    NRGL_ENUM(GL_ALPHA_TEST_REF) NRGL_ENUM(GL_DITHER) NRGL_ENUM(GL_BLEND_DST) NRGL_ENUM(GL_BLEND_SRC)
    NRGL_ENUM(GL_BLEND) NRGL_ENUM(GL_LOGIC_OP_MODE) NRGL_ENUM(GL_COLOR_LOGIC_OP)
    NRGL_ENUM(GL_DRAW_BUFFER) NRGL_ENUM(GL_READ_BUFFER) NRGL_ENUM(GL_SCISSOR_BOX) NRGL_ENUM(GL_SCISSOR_TEST)
    NRGL_ENUM(GL_COLOR_CLEAR_VALUE) NRGL_ENUM(GL_COLOR_WRITEMASK) NRGL_ENUM(GL_INDEX_MODE)
    NRGL_ENUM(GL_RGBA_MODE) NRGL_ENUM(GL_DOUBLEBUFFER) NRGL_ENUM(GL_PERSPECTIVE_CORRECTION_HINT)
    NRGL_ENUM(GL_POINT_SMOOTH_HINT) NRGL_ENUM(GL_LINE_SMOOTH_HINT) NRGL_ENUM(GL_POLYGON_SMOOTH_HINT)
    NRGL_ENUM(GL_FOG_HINT) NRGL_ENUM(GL_TEXTURE_GEN_S) NRGL_ENUM(GL_TEXTURE_GEN_T)
    NRGL_ENUM(GL_TEXTURE_GEN_R) NRGL_ENUM(GL_TEXTURE_GEN_Q)
    NRGL_ENUM(GL_UNPACK_SWAP_BYTES) NRGL_ENUM(GL_UNPACK_LSB_FIRST) NRGL_ENUM(GL_UNPACK_ROW_LENGTH)
    NRGL_ENUM(GL_UNPACK_SKIP_ROWS) NRGL_ENUM(GL_UNPACK_SKIP_PIXELS) NRGL_ENUM(GL_UNPACK_ALIGNMENT)
    NRGL_ENUM(GL_PACK_SWAP_BYTES) NRGL_ENUM(GL_PACK_LSB_FIRST) NRGL_ENUM(GL_PACK_ROW_LENGTH)
    NRGL_ENUM(GL_PACK_SKIP_ROWS) NRGL_ENUM(GL_PACK_SKIP_PIXELS) NRGL_ENUM(GL_PACK_ALIGNMENT)
    NRGL_ENUM(GL_MAX_LIGHTS) NRGL_ENUM(GL_MAX_CLIP_PLANES) NRGL_ENUM(GL_MAX_TEXTURE_SIZE)
    NRGL_ENUM(GL_MAX_ATTRIB_STACK_DEPTH) NRGL_ENUM(GL_MAX_MODELVIEW_STACK_DEPTH)
    NRGL_ENUM(GL_MAX_PROJECTION_STACK_DEPTH) NRGL_ENUM(GL_MAX_TEXTURE_STACK_DEPTH)
    NRGL_ENUM(GL_MAX_VIEWPORT_DIMS) NRGL_ENUM(GL_SUBPIXEL_BITS) NRGL_ENUM(GL_INDEX_BITS)
    NRGL_ENUM(GL_RED_BITS) NRGL_ENUM(GL_GREEN_BITS) NRGL_ENUM(GL_BLUE_BITS) NRGL_ENUM(GL_ALPHA_BITS)
    NRGL_ENUM(GL_DEPTH_BITS) NRGL_ENUM(GL_STENCIL_BITS)
    NRGL_ENUM(GL_TEXTURE_1D) NRGL_ENUM(GL_TEXTURE_2D) NRGL_ENUM(GL_TEXTURE_BINDING_2D)
    NRGL_ENUM(GL_POLYGON_OFFSET_FILL) NRGL_ENUM(GL_POLYGON_OFFSET_LINE) NRGL_ENUM(GL_POLYGON_OFFSET_POINT)
    NRGL_ENUM(GL_RESCALE_NORMAL)
    NRGL_ENUM(GL_CLIP_PLANE0) NRGL_ENUM(GL_CLIP_PLANE1) NRGL_ENUM(GL_CLIP_PLANE2)
    NRGL_ENUM(GL_CLIP_PLANE3) NRGL_ENUM(GL_CLIP_PLANE4) NRGL_ENUM(GL_CLIP_PLANE5)
    // texture parameters and levels
    NRGL_ENUM(GL_TEXTURE_WIDTH) NRGL_ENUM(GL_TEXTURE_HEIGHT) NRGL_ENUM(GL_TEXTURE_INTERNAL_FORMAT)
    NRGL_ENUM(GL_TEXTURE_BORDER_COLOR) NRGL_ENUM(GL_TEXTURE_BORDER)
    NRGL_ENUM(GL_TEXTURE_MAG_FILTER) NRGL_ENUM(GL_TEXTURE_MIN_FILTER)
    NRGL_ENUM(GL_TEXTURE_WRAP_S) NRGL_ENUM(GL_TEXTURE_WRAP_T)
    NRGL_ENUM(GL_TEXTURE_PRIORITY) NRGL_ENUM(GL_TEXTURE_RESIDENT)
    // hints
    NRGL_ENUM(GL_DONT_CARE) NRGL_ENUM(GL_FASTEST) NRGL_ENUM(GL_NICEST)
    // lights and materials
    NRGL_ENUM(GL_AMBIENT) NRGL_ENUM(GL_DIFFUSE) NRGL_ENUM(GL_SPECULAR) NRGL_ENUM(GL_POSITION)
    NRGL_ENUM(GL_SPOT_DIRECTION) NRGL_ENUM(GL_SPOT_EXPONENT) NRGL_ENUM(GL_SPOT_CUTOFF)
    NRGL_ENUM(GL_CONSTANT_ATTENUATION) NRGL_ENUM(GL_LINEAR_ATTENUATION) NRGL_ENUM(GL_QUADRATIC_ATTENUATION)
    NRGL_ENUM(GL_EMISSION) NRGL_ENUM(GL_SHININESS) NRGL_ENUM(GL_AMBIENT_AND_DIFFUSE) NRGL_ENUM(GL_COLOR_INDEXES)
    NRGL_ENUM(GL_LIGHT0) NRGL_ENUM(GL_LIGHT1) NRGL_ENUM(GL_LIGHT2) NRGL_ENUM(GL_LIGHT3)
    NRGL_ENUM(GL_LIGHT4) NRGL_ENUM(GL_LIGHT5) NRGL_ENUM(GL_LIGHT6) NRGL_ENUM(GL_LIGHT7)
    NRGL_ENUM(GL_LIGHT_MODEL_COLOR_CONTROL) NRGL_ENUM(GL_SINGLE_COLOR) NRGL_ENUM(GL_SEPARATE_SPECULAR_COLOR)
    // list modes, data types, logic ops
    NRGL_ENUM(GL_COMPILE) NRGL_ENUM(GL_COMPILE_AND_EXECUTE)
    NRGL_ENUM(GL_BYTE) NRGL_ENUM(GL_UNSIGNED_BYTE) NRGL_ENUM(GL_SHORT) NRGL_ENUM(GL_UNSIGNED_SHORT)
    NRGL_ENUM(GL_INT) NRGL_ENUM(GL_UNSIGNED_INT) NRGL_ENUM(GL_FLOAT) NRGL_ENUM(GL_2_BYTES)
    NRGL_ENUM(GL_3_BYTES) NRGL_ENUM(GL_4_BYTES) NRGL_ENUM(GL_DOUBLE)
    NRGL_ENUM(GL_CLEAR) NRGL_ENUM(GL_AND) NRGL_ENUM(GL_COPY) NRGL_ENUM(GL_XOR) NRGL_ENUM(GL_INVERT)
    NRGL_ENUM(GL_OR) NRGL_ENUM(GL_NOOP) NRGL_ENUM(GL_SET)
    // matrices, pixel formats, modes
    NRGL_ENUM(GL_MODELVIEW) NRGL_ENUM(GL_PROJECTION) NRGL_ENUM(GL_TEXTURE)
    NRGL_ENUM(GL_COLOR) NRGL_ENUM(GL_DEPTH) NRGL_ENUM(GL_STENCIL)
    NRGL_ENUM(GL_COLOR_INDEX) NRGL_ENUM(GL_STENCIL_INDEX) NRGL_ENUM(GL_DEPTH_COMPONENT)
    NRGL_ENUM(GL_RED) NRGL_ENUM(GL_GREEN) NRGL_ENUM(GL_BLUE) NRGL_ENUM(GL_ALPHA)
    NRGL_ENUM(GL_RGB) NRGL_ENUM(GL_RGBA) NRGL_ENUM(GL_LUMINANCE) NRGL_ENUM(GL_LUMINANCE_ALPHA)
    NRGL_ENUM(GL_BGR) NRGL_ENUM(GL_BGRA) NRGL_ENUM(GL_BITMAP)
    NRGL_ENUM(GL_ALPHA8) NRGL_ENUM(GL_LUMINANCE8) NRGL_ENUM(GL_LUMINANCE8_ALPHA8) NRGL_ENUM(GL_INTENSITY)
    NRGL_ENUM(GL_RGB8) NRGL_ENUM(GL_RGBA8) NRGL_ENUM(GL_RGB5_A1) NRGL_ENUM(GL_RGBA4)
    NRGL_ENUM(GL_ALPHA4) NRGL_ENUM(GL_ALPHA12) NRGL_ENUM(GL_ALPHA16) NRGL_ENUM(GL_LUMINANCE4)
    NRGL_ENUM(GL_LUMINANCE12) NRGL_ENUM(GL_LUMINANCE16) NRGL_ENUM(GL_LUMINANCE4_ALPHA4)
    NRGL_ENUM(GL_LUMINANCE6_ALPHA2) NRGL_ENUM(GL_LUMINANCE12_ALPHA4) NRGL_ENUM(GL_LUMINANCE12_ALPHA12)
    NRGL_ENUM(GL_LUMINANCE16_ALPHA16) NRGL_ENUM(GL_INTENSITY4) NRGL_ENUM(GL_INTENSITY8)
    NRGL_ENUM(GL_INTENSITY12) NRGL_ENUM(GL_INTENSITY16) NRGL_ENUM(GL_R3_G3_B2) NRGL_ENUM(GL_RGB4)
    NRGL_ENUM(GL_RGB5) NRGL_ENUM(GL_RGB10) NRGL_ENUM(GL_RGB12) NRGL_ENUM(GL_RGB16) NRGL_ENUM(GL_RGBA2)
    NRGL_ENUM(GL_RGB10_A2) NRGL_ENUM(GL_RGBA12) NRGL_ENUM(GL_RGBA16)
    NRGL_ENUM(GL_POINT) NRGL_ENUM(GL_LINE) NRGL_ENUM(GL_FILL)
    NRGL_ENUM(GL_FLAT) NRGL_ENUM(GL_SMOOTH)
    NRGL_ENUM(GL_KEEP) NRGL_ENUM(GL_REPLACE) NRGL_ENUM(GL_INCR) NRGL_ENUM(GL_DECR)
    NRGL_ENUM(GL_VENDOR) NRGL_ENUM(GL_RENDERER) NRGL_ENUM(GL_VERSION) NRGL_ENUM(GL_EXTENSIONS)
    // texture environment and coordinate generation
    NRGL_ENUM(GL_S) NRGL_ENUM(GL_T) NRGL_ENUM(GL_R) NRGL_ENUM(GL_Q)
    NRGL_ENUM(GL_MODULATE) NRGL_ENUM(GL_DECAL) NRGL_ENUM(GL_ADD)
    NRGL_ENUM(GL_TEXTURE_ENV_MODE) NRGL_ENUM(GL_TEXTURE_ENV_COLOR) NRGL_ENUM(GL_TEXTURE_ENV)
    NRGL_ENUM(GL_EYE_LINEAR) NRGL_ENUM(GL_OBJECT_LINEAR) NRGL_ENUM(GL_SPHERE_MAP)
    NRGL_ENUM(GL_TEXTURE_GEN_MODE) NRGL_ENUM(GL_OBJECT_PLANE) NRGL_ENUM(GL_EYE_PLANE)
    NRGL_ENUM(GL_NEAREST) NRGL_ENUM(GL_LINEAR) NRGL_ENUM(GL_NEAREST_MIPMAP_NEAREST)
    NRGL_ENUM(GL_LINEAR_MIPMAP_NEAREST) NRGL_ENUM(GL_NEAREST_MIPMAP_LINEAR) NRGL_ENUM(GL_LINEAR_MIPMAP_LINEAR)
    NRGL_ENUM(GL_CLAMP) NRGL_ENUM(GL_REPEAT) NRGL_ENUM(GL_CLAMP_TO_EDGE)
    NRGL_ENUM(GL_EXP) NRGL_ENUM(GL_EXP2)
    // vertex arrays
    NRGL_ENUM(GL_VERTEX_ARRAY) NRGL_ENUM(GL_NORMAL_ARRAY) NRGL_ENUM(GL_COLOR_ARRAY)
    NRGL_ENUM(GL_INDEX_ARRAY) NRGL_ENUM(GL_TEXTURE_COORD_ARRAY) NRGL_ENUM(GL_EDGE_FLAG_ARRAY)
    NRGL_ENUM(GL_V2F) NRGL_ENUM(GL_V3F) NRGL_ENUM(GL_C4UB_V2F) NRGL_ENUM(GL_C4UB_V3F)
    NRGL_ENUM(GL_C3F_V3F) NRGL_ENUM(GL_N3F_V3F) NRGL_ENUM(GL_C4F_N3F_V3F) NRGL_ENUM(GL_T2F_V3F)
    NRGL_ENUM(GL_T4F_V4F) NRGL_ENUM(GL_T2F_C4UB_V3F) NRGL_ENUM(GL_T2F_C3F_V3F) NRGL_ENUM(GL_T2F_N3F_V3F)
    NRGL_ENUM(GL_T2F_C4F_N3F_V3F) NRGL_ENUM(GL_T4F_C4F_N3F_V4F)
};
#undef NRGL_ENUM

const char* const primitiveNames[] = {"GL_POINTS",         "GL_LINES",     "GL_LINE_LOOP",
                                      "GL_LINE_STRIP",     "GL_TRIANGLES", "GL_TRIANGLE_STRIP",
                                      "GL_TRIANGLE_FAN",   "GL_QUADS",     "GL_QUAD_STRIP",
                                      "GL_POLYGON"};

struct BitName {
  GLbitfield bit;
  const char* name;
};

#define NRGL_BIT(name) {name, #name},
// Buffer bits first, so that clear masks read as they are usually written.
const BitName attribBits[] = {
    NRGL_BIT(GL_COLOR_BUFFER_BIT) NRGL_BIT(GL_DEPTH_BUFFER_BIT) NRGL_BIT(GL_STENCIL_BUFFER_BIT)
    NRGL_BIT(GL_ACCUM_BUFFER_BIT) NRGL_BIT(GL_CURRENT_BIT) NRGL_BIT(GL_POINT_BIT) NRGL_BIT(GL_LINE_BIT) NRGL_BIT(GL_POLYGON_BIT)
    NRGL_BIT(GL_POLYGON_STIPPLE_BIT) NRGL_BIT(GL_PIXEL_MODE_BIT) NRGL_BIT(GL_LIGHTING_BIT)
    NRGL_BIT(GL_FOG_BIT) NRGL_BIT(GL_VIEWPORT_BIT) NRGL_BIT(GL_TRANSFORM_BIT)
    NRGL_BIT(GL_ENABLE_BIT) NRGL_BIT(GL_HINT_BIT) NRGL_BIT(GL_EVAL_BIT)
    NRGL_BIT(GL_LIST_BIT) NRGL_BIT(GL_TEXTURE_BIT) NRGL_BIT(GL_SCISSOR_BIT)
};
const BitName clientAttribBits[] = {NRGL_BIT(GL_CLIENT_PIXEL_STORE_BIT) NRGL_BIT(GL_CLIENT_VERTEX_ARRAY_BIT)};
#undef NRGL_BIT

const char* findEnumName(GLenum value) {
  for (const EnumName& e : enumNames)
    if (e.value == value) return e.name;
  return nullptr;
}

// Parameters whose scalar value is itself an enumerant.
bool takesEnumValue(GLenum pname) {
  switch (pname) {
    case GL_TEXTURE_ENV_MODE:
    case GL_TEXTURE_MIN_FILTER:
    case GL_TEXTURE_MAG_FILTER:
    case GL_TEXTURE_WRAP_S:
    case GL_TEXTURE_WRAP_T:
    case GL_TEXTURE_GEN_MODE:
    case GL_FOG_MODE:
    case GL_LIGHT_MODEL_COLOR_CONTROL:
      return true;
    default:
      return false;
  }
}

// Number of values a vector parameter carries; every such call passes at least one.
int valueCount(GLenum pname) {
  switch (pname) {
    case GL_AMBIENT:
    case GL_DIFFUSE:
    case GL_SPECULAR:
    case GL_POSITION:
    case GL_EMISSION:
    case GL_AMBIENT_AND_DIFFUSE:
    case GL_LIGHT_MODEL_AMBIENT:
    case GL_FOG_COLOR:
    case GL_TEXTURE_ENV_COLOR:
    case GL_TEXTURE_BORDER_COLOR:
    case GL_OBJECT_PLANE:
    case GL_EYE_PLANE:
      return 4;
    case GL_SPOT_DIRECTION:
    case GL_COLOR_INDEXES:
      return 3;
    default:
      return 1;
  }
}

void appendf(std::string& out, const char* format, double value) {
  char buffer[64];
  snprintf(buffer, sizeof buffer, format, value);
  out += buffer;
}

void appendInt(std::string& out, long long value) {
  char buffer[32];
  snprintf(buffer, sizeof buffer, "%lld", value);
  out += buffer;
}

void appendHex(std::string& out, unsigned long long value) {
  char buffer[32];
  snprintf(buffer, sizeof buffer, "0x%llx", value);
  out += buffer;
}

void appendEnum(std::string& out, GLenum value) {
  if (const char* name = findEnumName(value))
    out += name;
  else
    appendHex(out, value);
}

template <size_t N>
void appendBits(std::string& out, GLbitfield mask, const BitName (&bits)[N], GLbitfield all, const char* allName) {
  if (mask == all) {
    out += allName;
    return;
  }
  size_t start = out.size();
  for (const BitName& b : bits) {
    if (mask & b.bit) {
      if (out.size() != start) out += '|';
      out += b.name;
      mask &= ~b.bit;
    }
  }
  if (mask || out.size() == start) {
    if (out.size() != start) out += '|';
    appendHex(out, mask);
  }
}

// Builds "glName(arg, arg, ...)" from the kind letters of the function list.
class CallText {
 public:
  CallText(const char* name, const char* kinds) : text(name), kind(kinds) { text += '('; }

  template <typename... A>
  std::string operator()(const A&... args) {
    (append(args), ...);
    text += ')';
    return std::move(text);
  }

 private:
  template <typename T>
  void append(const T& value) {
    const char k = *kind++;
    if (!first) text += ", ";
    first = false;
    if constexpr (std::is_pointer_v<T>)
      appendPointer(k, value);
    else if constexpr (std::is_floating_point_v<T>)
      appendFloat(k, value);
    else
      appendInteger(k, static_cast<long long>(value));
  }

  void appendInteger(char k, long long v) {
    switch (k) {
      case 'E':
        lastEnum = static_cast<GLenum>(v);
        appendEnum(text, lastEnum);
        break;
      case 'R':
        if (v >= 0 && v < static_cast<long long>(std::size(primitiveNames)))
          text += primitiveNames[v];
        else
          appendHex(text, static_cast<unsigned long long>(v));
        break;
      case 'F':
        if (v == GL_ZERO)
          text += "GL_ZERO";
        else if (v == GL_ONE)
          text += "GL_ONE";
        else
          appendEnum(text, static_cast<GLenum>(v));
        break;
      case 'B':
        appendBits(text, static_cast<GLbitfield>(v), attribBits, GL_ALL_ATTRIB_BITS, "GL_ALL_ATTRIB_BITS");
        break;
      case 'C':
        appendBits(text, static_cast<GLbitfield>(v), clientAttribBits, GL_CLIENT_ALL_ATTRIB_BITS,
                   "GL_CLIENT_ALL_ATTRIB_BITS");
        break;
      case 'b':
        text += v ? "GL_TRUE" : "GL_FALSE";
        break;
      case 'x':
        appendHex(text, static_cast<unsigned long long>(v));
        break;
      case 'I':
      case 'P':
        if ((k == 'I' || takesEnumValue(lastEnum)) && findEnumName(static_cast<GLenum>(v)))
          appendEnum(text, static_cast<GLenum>(v));
        else
          appendInt(text, v);
        break;
      default:
        lastInt = v;
        appendInt(text, v);
        break;
    }
  }

  void appendFloat(char k, double v) {
    if (k == 'P' && takesEnumValue(lastEnum))
      appendEnum(text, static_cast<GLenum>(v));
    else
      appendf(text, "%g", v);
  }

  template <typename T>
  void appendPointer(char k, T* values) {
    using Element = std::remove_cv_t<T>;
    if constexpr (std::is_arithmetic_v<Element>) {
      int count = 0;
      switch (k) {
        case '2': count = 2; break;
        case '3': count = 3; break;
        case '4': count = 4; break;
        case 'M': count = 16; break;
        case 'v': count = valueCount(lastEnum); break;
        case 'N': count = static_cast<int>(lastInt); break;
        default: break;
      }
      if (count > 0 && values) {
        const bool asEnum = k == 'v' && takesEnumValue(lastEnum);
        text += '{';
        for (int i = 0; i < count; ++i) {
          if (i) text += ", ";
          if (asEnum)
            appendEnum(text, static_cast<GLenum>(values[i]));
          else if constexpr (std::is_floating_point_v<Element>)
            appendf(text, "%g", values[i]);
          else
            appendInt(text, static_cast<long long>(values[i]));
        }
        text += '}';
        return;
      }
    }
    text += "ptr";
  }

  std::string text;
  const char* kind;
  bool first = true;
  GLenum lastEnum = 0;
  long long lastInt = 0;
};

// Declared only, for counting arguments inside decltype.
template <typename... A>
std::integral_constant<size_t, sizeof...(A)> argumentCount(const A&...);

#define NRGL_WRAPPER(ret, name, params, args, kinds)                                          \
  ret wrap_gl##name params {                                                                  \
    static_assert(sizeof(kinds) - 1 == decltype(argumentCount args)::value,                  \
                  "one kind letter per argument of gl" #name);                                \
    nrgl::detail::emit(CallText("gl" #name, kinds) args);                                     \
    return ::gl##name args;                                                                   \
  }
#define NRGLU_WRAPPER(ret, name, params, args, kinds)                                         \
  ret wrap_glu##name params {                                                                 \
    static_assert(sizeof(kinds) - 1 == decltype(argumentCount args)::value,                  \
                  "one kind letter per argument of glu" #name);                               \
    nrgl::detail::emit(CallText("glu" #name, kinds) args);                                    \
    return ::glu##name args;                                                                  \
  }
NRGL_FUNCTIONS(NRGL_WRAPPER)
NRGLU_FUNCTIONS(NRGLU_WRAPPER)
#undef NRGL_WRAPPER
#undef NRGLU_WRAPPER

#define NRGL_REAL(ret, name, params, args, kinds) &::gl##name,
#define NRGLU_REAL(ret, name, params, args, kinds) &::glu##name,
constexpr nrgl::detail::Table realCalls = {NRGL_FUNCTIONS(NRGL_REAL) NRGLU_FUNCTIONS(NRGLU_REAL)};
#undef NRGL_REAL
#undef NRGLU_REAL

#define NRGL_WRAPPED(ret, name, params, args, kinds) &wrap_gl##name,
#define NRGLU_WRAPPED(ret, name, params, args, kinds) &wrap_glu##name,
constexpr nrgl::detail::Table wrappedCalls = {NRGL_FUNCTIONS(NRGL_WRAPPED) NRGLU_FUNCTIONS(NRGLU_WRAPPED)};
#undef NRGL_WRAPPED
#undef NRGLU_WRAPPED

bool tracing = false;
nrGLRecorder* activeRecorder = nullptr;

void selectTable() { nrgl::detail::calls = (tracing || activeRecorder) ? wrappedCalls : realCalls; }

}  // namespace

namespace nrgl {
namespace detail {

Table calls = realCalls;

void emit(std::string&& line) {
  if (tracing) {
    fputs(line.c_str(), stderr);
    fputc('\n', stderr);
  }
  if (activeRecorder) activeRecorder->recorded.push_back(std::move(line));
}

}  // namespace detail

void setTrace(bool on) {
  tracing = on;
  selectTable();
}

bool isTracing() { return tracing; }

void setTraceFromEnvironment() {
  const char* value = getenv("NR_GL_TRACE");
  setTrace(value && *value && strcmp(value, "0") != 0);
}

std::string enumName(GLenum value) {
  std::string name;
  appendEnum(name, value);
  return name;
}

}  // namespace nrgl

nrGLRecorder::nrGLRecorder() : outer(activeRecorder) {
  activeRecorder = this;
  selectTable();
}

nrGLRecorder::~nrGLRecorder() {
  activeRecorder = outer;
  selectTable();
}

std::string nrGLRecorder::text() const {
  std::string joined;
  for (const std::string& line : recorded) {
    joined += line;
    joined += '\n';
  }
  return joined;
}

namespace {

// Tracing follows NR_GL_TRACE from the moment the library is loaded.
const bool traceReadAtLoad = (nrgl::setTraceFromEnvironment(), true);

}  // namespace
