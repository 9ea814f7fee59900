// Creates objects that a test holds a reference to, as a scene's owner would.
#pragma once

namespace nrtest {

// A new object of type T with one reference held by the caller, who unrefs it.
template <typename T>
T* held() {
  T* object = new T;
  object->ref();
  return object;
}

// Drops the caller's reference to each object, in the order given.
template <typename... T>
void unref(T*... objects) {
  (objects->unref(), ...);
}

}  // namespace nrtest
