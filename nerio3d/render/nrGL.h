// The single path from the library to OpenGL and GLU, with call recording and tracing.
//
// Library code never calls gl* or glu* directly. It writes
//
//   nrgl::Enable(GL_LIGHTING);          // glEnable
//   nrgl::LoadMatrixf(m);               // glLoadMatrixf
//   nrglu::Perspective(45, 1, 1, 100);  // gluPerspective
//
// that is, the OpenGL name without its "gl" prefix in namespace nrgl, and the
// GLU name without "glu" in namespace nrglu. Each call is one indirect call
// through a table that normally holds the real functions. While a recorder
// exists, or while tracing is on (environment variable NR_GL_TRACE=1 at start-up,
// or nrgl::setTrace), the table holds wrappers that turn every call into one
// line of text such as "glEnable(GL_LIGHTING)" or "glLineWidth(2)", hand it to
// the recorder and/or print it to standard error, then call the real function.
//
// Argument text: enumerants by name (unknown values in hex), masks as names
// joined by '|', booleans as GL_TRUE/GL_FALSE, integers "%d", floats "%g",
// stipple patterns and stencil masks in hex, arrays of known length as
// "{a, b, c}" (matrices, colours, light and material vectors, deleted ids),
// any other pointer as "ptr". Return values are not part of the text.
//
// Adding a function is one line in NRGL_FUNCTIONS or NRGLU_FUNCTIONS:
//   X(return type, name without prefix, (parameters), (argument names), "kinds")
// with one kind letter per argument:
//   E enumerant            R primitive mode (GL_POINTS...)   F blend/stencil factor (GL_ZERO, GL_ONE...)
//   B attribute/clear mask C client attribute mask           b GLboolean
//   i integer              I integer that may be a format enumerant
//   x hex integer          f floating point
//   P scalar parameter, shown as an enumerant when the preceding pname takes one
//   v array whose length follows from the preceding pname
//   N array of ids whose length is the preceding integer argument
//   2 3 4 fixed-length array   M 4x4 matrix   p opaque pointer
//
// Switching tables is not synchronised: record and trace from one thread.
#pragma once

#include <GL/gl.h>
#include <GL/glu.h>

#include <string>
#include <vector>

// clang-format off
#define NRGL_FUNCTIONS(X) \
  /* state */ \
  X(void, Enable, (GLenum cap), (cap), "E") \
  X(void, Disable, (GLenum cap), (cap), "E") \
  X(GLboolean, IsEnabled, (GLenum cap), (cap), "E") \
  X(void, GetBooleanv, (GLenum pname, GLboolean* params), (pname, params), "Ep") \
  X(void, GetIntegerv, (GLenum pname, GLint* params), (pname, params), "Ep") \
  X(void, GetFloatv, (GLenum pname, GLfloat* params), (pname, params), "Ep") \
  X(void, GetDoublev, (GLenum pname, GLdouble* params), (pname, params), "Ep") \
  X(void, GetPointerv, (GLenum pname, GLvoid** params), (pname, params), "Ep") \
  X(GLenum, GetError, (), (), "") \
  X(const GLubyte*, GetString, (GLenum name), (name), "E") \
  X(void, GetLightfv, (GLenum light, GLenum pname, GLfloat* params), (light, pname, params), "EEp") \
  X(void, GetMaterialfv, (GLenum face, GLenum pname, GLfloat* params), (face, pname, params), "EEp") \
  X(void, GetTexEnvfv, (GLenum target, GLenum pname, GLfloat* params), (target, pname, params), "EEp") \
  X(void, GetTexEnviv, (GLenum target, GLenum pname, GLint* params), (target, pname, params), "EEp") \
  X(void, GetTexGenfv, (GLenum coord, GLenum pname, GLfloat* params), (coord, pname, params), "EEp") \
  X(void, GetTexParameteriv, (GLenum target, GLenum pname, GLint* params), (target, pname, params), "EEp") \
  X(void, GetTexLevelParameteriv, (GLenum target, GLint level, GLenum pname, GLint* params), (target, level, pname, params), "EiEp") \
  X(void, GetTexImage, (GLenum target, GLint level, GLenum format, GLenum type, GLvoid* pixels), (target, level, format, type, pixels), "EiEEp") \
  X(void, GetPolygonStipple, (GLubyte* mask), (mask), "p") \
  X(void, GetClipPlane, (GLenum plane, GLdouble* equation), (plane, equation), "Ep") \
  X(void, Hint, (GLenum target, GLenum mode), (target, mode), "EE") \
  X(void, Flush, (), (), "") \
  X(void, Finish, (), (), "") \
  X(void, PushAttrib, (GLbitfield mask), (mask), "B") \
  X(void, PopAttrib, (), (), "") \
  X(void, PushClientAttrib, (GLbitfield mask), (mask), "C") \
  X(void, PopClientAttrib, (), (), "") \
  /* transforms */ \
  X(void, MatrixMode, (GLenum mode), (mode), "E") \
  X(void, LoadIdentity, (), (), "") \
  X(void, LoadMatrixf, (const GLfloat* m), (m), "M") \
  X(void, LoadMatrixd, (const GLdouble* m), (m), "M") \
  X(void, MultMatrixf, (const GLfloat* m), (m), "M") \
  X(void, MultMatrixd, (const GLdouble* m), (m), "M") \
  X(void, PushMatrix, (), (), "") \
  X(void, PopMatrix, (), (), "") \
  X(void, Ortho, (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble zNear, GLdouble zFar), (left, right, bottom, top, zNear, zFar), "ffffff") \
  X(void, Frustum, (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top, GLdouble zNear, GLdouble zFar), (left, right, bottom, top, zNear, zFar), "ffffff") \
  X(void, Translatef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), "fff") \
  X(void, Translated, (GLdouble x, GLdouble y, GLdouble z), (x, y, z), "fff") \
  X(void, Rotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z), (angle, x, y, z), "ffff") \
  X(void, Rotated, (GLdouble angle, GLdouble x, GLdouble y, GLdouble z), (angle, x, y, z), "ffff") \
  X(void, Scalef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), "fff") \
  X(void, Scaled, (GLdouble x, GLdouble y, GLdouble z), (x, y, z), "fff") \
  X(void, Viewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height), "iiii") \
  X(void, DepthRange, (GLclampd zNear, GLclampd zFar), (zNear, zFar), "ff") \
  X(void, Scissor, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height), "iiii") \
  X(void, ClipPlane, (GLenum plane, const GLdouble* equation), (plane, equation), "E4") \
  /* lighting and materials */ \
  X(void, Lightf, (GLenum light, GLenum pname, GLfloat param), (light, pname, param), "EEP") \
  X(void, Lightfv, (GLenum light, GLenum pname, const GLfloat* params), (light, pname, params), "EEv") \
  X(void, Lighti, (GLenum light, GLenum pname, GLint param), (light, pname, param), "EEP") \
  X(void, Lightiv, (GLenum light, GLenum pname, const GLint* params), (light, pname, params), "EEv") \
  X(void, LightModelf, (GLenum pname, GLfloat param), (pname, param), "EP") \
  X(void, LightModelfv, (GLenum pname, const GLfloat* params), (pname, params), "Ev") \
  X(void, LightModeli, (GLenum pname, GLint param), (pname, param), "EP") \
  X(void, LightModeliv, (GLenum pname, const GLint* params), (pname, params), "Ev") \
  X(void, Materialf, (GLenum face, GLenum pname, GLfloat param), (face, pname, param), "EEP") \
  X(void, Materialfv, (GLenum face, GLenum pname, const GLfloat* params), (face, pname, params), "EEv") \
  X(void, Materiali, (GLenum face, GLenum pname, GLint param), (face, pname, param), "EEP") \
  X(void, Materialiv, (GLenum face, GLenum pname, const GLint* params), (face, pname, params), "EEv") \
  X(void, ColorMaterial, (GLenum face, GLenum mode), (face, mode), "EE") \
  X(void, ShadeModel, (GLenum mode), (mode), "E") \
  /* fog */ \
  X(void, Fogf, (GLenum pname, GLfloat param), (pname, param), "EP") \
  X(void, Fogfv, (GLenum pname, const GLfloat* params), (pname, params), "Ev") \
  X(void, Fogi, (GLenum pname, GLint param), (pname, param), "EP") \
  X(void, Fogiv, (GLenum pname, const GLint* params), (pname, params), "Ev") \
  /* textures */ \
  X(void, GenTextures, (GLsizei n, GLuint* textures), (n, textures), "ip") \
  X(void, DeleteTextures, (GLsizei n, const GLuint* textures), (n, textures), "iN") \
  X(void, BindTexture, (GLenum target, GLuint texture), (target, texture), "Ei") \
  X(GLboolean, IsTexture, (GLuint texture), (texture), "i") \
  X(void, TexImage1D, (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLint border, GLenum format, GLenum type, const GLvoid* pixels), (target, level, internalFormat, width, border, format, type, pixels), "EiIiiEEp") \
  X(void, TexImage2D, (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border, GLenum format, GLenum type, const GLvoid* pixels), (target, level, internalFormat, width, height, border, format, type, pixels), "EiIiiiEEp") \
  X(void, TexSubImage2D, (GLenum target, GLint level, GLint xoffset, GLint yoffset, GLsizei width, GLsizei height, GLenum format, GLenum type, const GLvoid* pixels), (target, level, xoffset, yoffset, width, height, format, type, pixels), "EiiiiiEEp") \
  X(void, CopyTexImage2D, (GLenum target, GLint level, GLenum internalFormat, GLint x, GLint y, GLsizei width, GLsizei height, GLint border), (target, level, internalFormat, x, y, width, height, border), "EiEiiiii") \
  X(void, TexParameteri, (GLenum target, GLenum pname, GLint param), (target, pname, param), "EEP") \
  X(void, TexParameterf, (GLenum target, GLenum pname, GLfloat param), (target, pname, param), "EEP") \
  X(void, TexParameteriv, (GLenum target, GLenum pname, const GLint* params), (target, pname, params), "EEv") \
  X(void, TexParameterfv, (GLenum target, GLenum pname, const GLfloat* params), (target, pname, params), "EEv") \
  X(void, TexEnvi, (GLenum target, GLenum pname, GLint param), (target, pname, param), "EEP") \
  X(void, TexEnvf, (GLenum target, GLenum pname, GLfloat param), (target, pname, param), "EEP") \
  X(void, TexEnviv, (GLenum target, GLenum pname, const GLint* params), (target, pname, params), "EEv") \
  X(void, TexEnvfv, (GLenum target, GLenum pname, const GLfloat* params), (target, pname, params), "EEv") \
  X(void, TexGeni, (GLenum coord, GLenum pname, GLint param), (coord, pname, param), "EEP") \
  X(void, TexGenf, (GLenum coord, GLenum pname, GLfloat param), (coord, pname, param), "EEP") \
  X(void, TexGend, (GLenum coord, GLenum pname, GLdouble param), (coord, pname, param), "EEP") \
  X(void, TexGeniv, (GLenum coord, GLenum pname, const GLint* params), (coord, pname, params), "EEv") \
  X(void, TexGenfv, (GLenum coord, GLenum pname, const GLfloat* params), (coord, pname, params), "EEv") \
  X(void, TexGendv, (GLenum coord, GLenum pname, const GLdouble* params), (coord, pname, params), "EEv") \
  /* fragment tests, blending and masks */ \
  X(void, BlendFunc, (GLenum sfactor, GLenum dfactor), (sfactor, dfactor), "FF") \
  X(void, AlphaFunc, (GLenum func, GLclampf ref), (func, ref), "Ef") \
  X(void, DepthFunc, (GLenum func), (func), "E") \
  X(void, DepthMask, (GLboolean flag), (flag), "b") \
  X(void, ColorMask, (GLboolean red, GLboolean green, GLboolean blue, GLboolean alpha), (red, green, blue, alpha), "bbbb") \
  X(void, LogicOp, (GLenum opcode), (opcode), "E") \
  X(void, StencilFunc, (GLenum func, GLint ref, GLuint mask), (func, ref, mask), "Eix") \
  X(void, StencilOp, (GLenum fail, GLenum zfail, GLenum zpass), (fail, zfail, zpass), "FFF") \
  X(void, StencilMask, (GLuint mask), (mask), "x") \
  X(void, DrawBuffer, (GLenum mode), (mode), "E") \
  X(void, ReadBuffer, (GLenum mode), (mode), "E") \
  /* rasterisation */ \
  X(void, PolygonStipple, (const GLubyte* mask), (mask), "p") \
  X(void, LineStipple, (GLint factor, GLushort pattern), (factor, pattern), "ix") \
  X(void, LineWidth, (GLfloat width), (width), "f") \
  X(void, PointSize, (GLfloat size), (size), "f") \
  X(void, FrontFace, (GLenum mode), (mode), "E") \
  X(void, CullFace, (GLenum mode), (mode), "E") \
  X(void, PolygonMode, (GLenum face, GLenum mode), (face, mode), "EE") \
  X(void, PolygonOffset, (GLfloat factor, GLfloat units), (factor, units), "ff") \
  /* clearing */ \
  X(void, Clear, (GLbitfield mask), (mask), "B") \
  X(void, ClearColor, (GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha), (red, green, blue, alpha), "ffff") \
  X(void, ClearDepth, (GLclampd depth), (depth), "f") \
  X(void, ClearIndex, (GLfloat c), (c), "f") \
  X(void, ClearStencil, (GLint s), (s), "i") \
  /* display lists */ \
  X(GLuint, GenLists, (GLsizei range), (range), "i") \
  X(void, NewList, (GLuint list, GLenum mode), (list, mode), "iE") \
  X(void, EndList, (), (), "") \
  X(void, CallList, (GLuint list), (list), "i") \
  X(void, CallLists, (GLsizei n, GLenum type, const GLvoid* lists), (n, type, lists), "iEp") \
  X(void, DeleteLists, (GLuint list, GLsizei range), (list, range), "ii") \
  X(void, ListBase, (GLuint base), (base), "i") \
  X(GLboolean, IsList, (GLuint list), (list), "i") \
  /* immediate mode */ \
  X(void, Begin, (GLenum mode), (mode), "R") \
  X(void, End, (), (), "") \
  X(void, Vertex2f, (GLfloat x, GLfloat y), (x, y), "ff") \
  X(void, Vertex2i, (GLint x, GLint y), (x, y), "ii") \
  X(void, Vertex3f, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), "fff") \
  X(void, Vertex3d, (GLdouble x, GLdouble y, GLdouble z), (x, y, z), "fff") \
  X(void, Vertex4f, (GLfloat x, GLfloat y, GLfloat z, GLfloat w), (x, y, z, w), "ffff") \
  X(void, Vertex2fv, (const GLfloat* v), (v), "2") \
  X(void, Vertex3fv, (const GLfloat* v), (v), "3") \
  X(void, Vertex4fv, (const GLfloat* v), (v), "4") \
  X(void, Normal3f, (GLfloat nx, GLfloat ny, GLfloat nz), (nx, ny, nz), "fff") \
  X(void, Normal3fv, (const GLfloat* v), (v), "3") \
  X(void, Normal3sv, (const GLshort* v), (v), "3") \
  X(void, Color3f, (GLfloat red, GLfloat green, GLfloat blue), (red, green, blue), "fff") \
  X(void, Color4f, (GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha), (red, green, blue, alpha), "ffff") \
  X(void, Color3fv, (const GLfloat* v), (v), "3") \
  X(void, Color4fv, (const GLfloat* v), (v), "4") \
  X(void, Color3ub, (GLubyte red, GLubyte green, GLubyte blue), (red, green, blue), "iii") \
  X(void, Color4ub, (GLubyte red, GLubyte green, GLubyte blue, GLubyte alpha), (red, green, blue, alpha), "iiii") \
  X(void, Color3ubv, (const GLubyte* v), (v), "3") \
  X(void, Color4ubv, (const GLubyte* v), (v), "4") \
  X(void, TexCoord1f, (GLfloat s), (s), "f") \
  X(void, TexCoord2f, (GLfloat s, GLfloat t), (s, t), "ff") \
  X(void, TexCoord3f, (GLfloat s, GLfloat t, GLfloat r), (s, t, r), "fff") \
  X(void, TexCoord4f, (GLfloat s, GLfloat t, GLfloat r, GLfloat q), (s, t, r, q), "ffff") \
  X(void, TexCoord2fv, (const GLfloat* v), (v), "2") \
  X(void, TexCoord3fv, (const GLfloat* v), (v), "3") \
  X(void, TexCoord4fv, (const GLfloat* v), (v), "4") \
  X(void, Indexi, (GLint c), (c), "i") \
  X(void, Indexf, (GLfloat c), (c), "f") \
  X(void, EdgeFlag, (GLboolean flag), (flag), "b") \
  X(void, Rectf, (GLfloat x1, GLfloat y1, GLfloat x2, GLfloat y2), (x1, y1, x2, y2), "ffff") \
  /* vertex arrays */ \
  X(void, VertexPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid* ptr), (size, type, stride, ptr), "iEip") \
  X(void, NormalPointer, (GLenum type, GLsizei stride, const GLvoid* ptr), (type, stride, ptr), "Eip") \
  X(void, ColorPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid* ptr), (size, type, stride, ptr), "iEip") \
  X(void, TexCoordPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid* ptr), (size, type, stride, ptr), "iEip") \
  X(void, IndexPointer, (GLenum type, GLsizei stride, const GLvoid* ptr), (type, stride, ptr), "Eip") \
  X(void, EdgeFlagPointer, (GLsizei stride, const GLvoid* ptr), (stride, ptr), "ip") \
  X(void, InterleavedArrays, (GLenum format, GLsizei stride, const GLvoid* pointer), (format, stride, pointer), "Eip") \
  X(void, EnableClientState, (GLenum cap), (cap), "E") \
  X(void, DisableClientState, (GLenum cap), (cap), "E") \
  X(void, DrawArrays, (GLenum mode, GLint first, GLsizei count), (mode, first, count), "Rii") \
  X(void, DrawElements, (GLenum mode, GLsizei count, GLenum type, const GLvoid* indices), (mode, count, type, indices), "RiEp") \
  X(void, ArrayElement, (GLint i), (i), "i") \
  /* pixels and raster */ \
  X(void, RasterPos2i, (GLint x, GLint y), (x, y), "ii") \
  X(void, RasterPos2f, (GLfloat x, GLfloat y), (x, y), "ff") \
  X(void, RasterPos3f, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), "fff") \
  X(void, RasterPos3fv, (const GLfloat* v), (v), "3") \
  X(void, Bitmap, (GLsizei width, GLsizei height, GLfloat xorig, GLfloat yorig, GLfloat xmove, GLfloat ymove, const GLubyte* bitmap), (width, height, xorig, yorig, xmove, ymove, bitmap), "iiffffp") \
  X(void, PixelStorei, (GLenum pname, GLint param), (pname, param), "Ei") \
  X(void, PixelZoom, (GLfloat xfactor, GLfloat yfactor), (xfactor, yfactor), "ff") \
  X(void, ReadPixels, (GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type, GLvoid* pixels), (x, y, width, height, format, type, pixels), "iiiiEEp") \
  X(void, DrawPixels, (GLsizei width, GLsizei height, GLenum format, GLenum type, const GLvoid* pixels), (width, height, format, type, pixels), "iiEEp")

#define NRGLU_FUNCTIONS(X) \
  X(const GLubyte*, ErrorString, (GLenum error), (error), "E") \
  X(void, Perspective, (GLdouble fovy, GLdouble aspect, GLdouble zNear, GLdouble zFar), (fovy, aspect, zNear, zFar), "ffff") \
  X(void, LookAt, (GLdouble eyeX, GLdouble eyeY, GLdouble eyeZ, GLdouble centerX, GLdouble centerY, GLdouble centerZ, GLdouble upX, GLdouble upY, GLdouble upZ), (eyeX, eyeY, eyeZ, centerX, centerY, centerZ, upX, upY, upZ), "fffffffff") \
  X(void, Ortho2D, (GLdouble left, GLdouble right, GLdouble bottom, GLdouble top), (left, right, bottom, top), "ffff") \
  X(void, PickMatrix, (GLdouble x, GLdouble y, GLdouble delX, GLdouble delY, GLint* viewport), (x, y, delX, delY, viewport), "ffff4") \
  X(GLint, Build2DMipmaps, (GLenum target, GLint internalFormat, GLsizei width, GLsizei height, GLenum format, GLenum type, const void* data), (target, internalFormat, width, height, format, type, data), "EIiiEEp") \
  X(GLint, ScaleImage, (GLenum format, GLsizei wIn, GLsizei hIn, GLenum typeIn, const void* dataIn, GLsizei wOut, GLsizei hOut, GLenum typeOut, GLvoid* dataOut), (format, wIn, hIn, typeIn, dataIn, wOut, hOut, typeOut, dataOut), "EiiEpiiEp") \
  X(GLint, Project, (GLdouble objX, GLdouble objY, GLdouble objZ, const GLdouble* model, const GLdouble* proj, const GLint* view, GLdouble* winX, GLdouble* winY, GLdouble* winZ), (objX, objY, objZ, model, proj, view, winX, winY, winZ), "fffMM4ppp") \
  X(GLint, UnProject, (GLdouble winX, GLdouble winY, GLdouble winZ, const GLdouble* model, const GLdouble* proj, const GLint* view, GLdouble* objX, GLdouble* objY, GLdouble* objZ), (winX, winY, winZ, model, proj, view, objX, objY, objZ), "fffMM4ppp")
// clang-format on

namespace nrgl {
namespace detail {

// One pointer per function; "calls" is the table every inline forwarder goes through.
struct Table {
#define NRGL_TABLE_ENTRY(ret, name, params, args, kinds) ret(*gl##name) params;
#define NRGLU_TABLE_ENTRY(ret, name, params, args, kinds) ret(*glu##name) params;
  NRGL_FUNCTIONS(NRGL_TABLE_ENTRY)
  NRGLU_FUNCTIONS(NRGLU_TABLE_ENTRY)
#undef NRGL_TABLE_ENTRY
#undef NRGLU_TABLE_ENTRY
};

extern Table calls;

// Hands one line of call text to the active recorder and to the trace.
void emit(std::string&& line);

}  // namespace detail

#define NRGL_FORWARDER(ret, name, params, args, kinds) \
  inline ret name params { return detail::calls.gl##name args; }
NRGL_FUNCTIONS(NRGL_FORWARDER)
#undef NRGL_FORWARDER

// Turns printing of every call to standard error on or off.
void setTrace(bool on);
bool isTracing();

// Sets tracing from NR_GL_TRACE as it is now: on for any value but empty and "0".
// The library does this once when it is loaded.
void setTraceFromEnvironment();

// Name of an OpenGL enumerant as the trace prints it, hex for unknown values.
std::string enumName(GLenum value);

}  // namespace nrgl

namespace nrglu {

#define NRGLU_FORWARDER(ret, name, params, args, kinds) \
  inline ret name params { return nrgl::detail::calls.glu##name args; }
NRGLU_FUNCTIONS(NRGLU_FORWARDER)
#undef NRGLU_FORWARDER

}  // namespace nrglu

// Records the text of every OpenGL and GLU call made while it exists; the
// calls still reach OpenGL. Recorders nest: the innermost one receives the calls.
class nrGLRecorder {
 public:
  nrGLRecorder();
  ~nrGLRecorder();
  nrGLRecorder(const nrGLRecorder&) = delete;
  nrGLRecorder& operator=(const nrGLRecorder&) = delete;

  // The calls recorded so far, oldest first, e.g. "glEnable(GL_LIGHTING)".
  const std::vector<std::string>& calls() const { return recorded; }
  // The calls joined with '\n' after each one, handy for one-line expectations.
  std::string text() const;
  void clear() { recorded.clear(); }

 private:
  friend void nrgl::detail::emit(std::string&& line);
  std::vector<std::string> recorded;
  nrGLRecorder* outer;
};
