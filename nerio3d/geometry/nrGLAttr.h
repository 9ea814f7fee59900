// One vertex attribute stream as drawing sees it: where its elements lie, how
// to step through them, and the immediate-mode call that sends one element.
#pragma once

#include <GL/gl.h>

struct nrGLAttr {
  // Sends the element at the pointer to OpenGL (glVertex3fv, glNormal3fv ...).
  typedef void (*SendFunc)(const void* element);

  // The next element (when not indexed) or element 0 (when indexed).
  const unsigned char* data = nullptr;
  // Cursor into the attribute's index list; null when it has none.
  const int* index = nullptr;
  GLenum type = GL_FLOAT;
  short stride = 0;
  short size = 0;
  SendFunc send = nullptr;

  // The element the next send takes; the cursor does not move.
  const unsigned char* current() const { return index ? data + stride * *index : data; }
  // Sends the current element and moves to the next one.
  void sendNext() {
    if (index) {
      send(data + stride * *index++);
    } else {
      send(data);
      data += stride;
    }
  }
  // Moves n elements on without sending.
  void skip(int n) {
    if (index)
      index += n;
    else
      data += stride * n;
  }

  // The immediate-mode calls of the attribute sets.
  static void vertex3f(const void* element);
  static void normal3f(const void* element);
  static void normal3s(const void* element);
  static void color3f(const void* element);
  static void color4f(const void* element);
  static void texCoord2f(const void* element);
};
