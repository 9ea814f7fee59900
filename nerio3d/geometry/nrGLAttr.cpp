#include "nerio3d/geometry/nrGLAttr.h"

#include "nerio3d/render/nrGL.h"

void nrGLAttr::vertex3f(const void* element) { nrgl::Vertex3fv(static_cast<const GLfloat*>(element)); }
void nrGLAttr::normal3f(const void* element) { nrgl::Normal3fv(static_cast<const GLfloat*>(element)); }
void nrGLAttr::normal3s(const void* element) { nrgl::Normal3sv(static_cast<const GLshort*>(element)); }
void nrGLAttr::color3f(const void* element) { nrgl::Color3fv(static_cast<const GLfloat*>(element)); }
void nrGLAttr::color4f(const void* element) { nrgl::Color4fv(static_cast<const GLfloat*>(element)); }
void nrGLAttr::texCoord2f(const void* element) { nrgl::TexCoord2fv(static_cast<const GLfloat*>(element)); }
