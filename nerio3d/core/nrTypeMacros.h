// The shape every registering class shares, written once.
//
// In the class body:     NR_DECLARE_TYPE(nrBox)
// In the source file:    NR_DEFINE_TYPE(nrBox, nrGeometry, "Box") { ...own fields... }
// Root types (no parent): NR_DEFINE_ROOT_TYPE(nrObject, "Object") { }
// After another class:    NR_DEFINE_TYPE_AFTER(nrGroup, nrNode, "Group", nrContext) { }
//
// The class gets a static type pointer (null until registered), an initClass()
// that registers the parent first, getClassType() that registers on first use,
// and initFields(type), the body written after the macro, where the class adds
// its own field descriptors, enumerations and engine lists.
#pragma once

#include "nerio3d/core/nrType.h"

#define NR_DECLARE_TYPE(Class)                 \
 public:                                       \
  static nrType* classType;                    \
  static nrType* getClassType() {              \
    if (!classType) initClass();               \
    return classType;                          \
  }                                            \
                                               \
 protected:                                    \
  static void initClass();                     \
                                               \
 private:                                      \
  static void initFields(nrType* type);        \
                                               \
 public:

// Concrete containers also answer instantiate() with a new default instance.
#define NR_DECLARE_CONTAINER_TYPE(Class)                             \
  NR_DECLARE_TYPE(Class)                                             \
  nrContainer* instantiate() override { return new Class; }

#define NR_DEFINE_TYPE(Class, Parent, Name)              \
  nrType* Class::classType = nullptr;                    \
  void Class::initClass() {                              \
    if (classType) return;                               \
    nrType* parentType = Parent::getClassType();         \
    classType = new nrType(parentType, Name);            \
    initFields(classType);                               \
  }                                                      \
  void Class::initFields([[maybe_unused]] nrType* type)

// For classes whose registration must follow another class's (groups and
// actions register the graphics context first).
#define NR_DEFINE_TYPE_AFTER(Class, Parent, Name, First) \
  nrType* Class::classType = nullptr;                    \
  void Class::initClass() {                              \
    if (classType) return;                               \
    First::getClassType();                               \
    nrType* parentType = Parent::getClassType();         \
    classType = new nrType(parentType, Name);            \
    initFields(classType);                               \
  }                                                      \
  void Class::initFields([[maybe_unused]] nrType* type)

#define NR_DEFINE_ROOT_TYPE(Class, Name)                 \
  nrType* Class::classType = nullptr;                    \
  void Class::initClass() {                              \
    if (classType) return;                               \
    classType = new nrType(nullptr, Name);               \
    initFields(classType);                               \
  }                                                      \
  void Class::initFields([[maybe_unused]] nrType* type)
