// The scene reader: turns a file in VRML 2.0 syntax into library nodes under
// one root group, mapping each class name to a library class, setting fields
// by name, resolving DEF/USE and ROUTE, and converting what the file format
// leaves implicit (default appearance, shared textures, face-set normals,
// inlined files, audio samples).
#pragma once

#include <cstdio>

#include "nerio3d/core/nrName.h"

class nrContainer;
class nrField;
class nrMField;
class nrPtrArray;

class vlDB {
 public:
  // Reads the file found under fileName through the data-file search into a
  // new root group. The root is set whenever the file could be opened, also
  // when a statement failed, and is unreferenced: the caller references it or
  // disposes of it with unref. 1 when the last statement read succeeded.
  // A file that the search does not find gives a null root and no message:
  // the caller reports it.
  // list is handed on to the reads of inlined files; the reader itself puts
  // nothing into it.
  static unsigned char readFile(const char* fileName, nrContainer*& root, nrPtrArray& list);
  // As readFile, from a stream the caller opened (and closes).
  static unsigned char readStream(FILE* stream, nrContainer*& root, nrPtrArray& list);

  // Registers every library class and makes the reader's shared state; the
  // reads call it themselves.
  static void init();

 private:
  struct FileState;

  static unsigned char read(FileState& file, nrContainer*& root);
  static unsigned char readObject(FileState& file, nrContainer*& object);
  static unsigned char readNode(FileState& file, const nrName& defName, const nrName& className,
                                nrContainer*& object);
  static unsigned char readNodeInstance(FileState& file, const nrName& className, nrContainer*& object);
  static nrContainer* createInstanceFromName(const nrName& className, int& conversion);
  static unsigned char readFields(FileState& file, nrContainer* container);
  // 0 when the value could not be read; -1 when the container has no such field.
  static int readvlField(FileState& file, nrContainer* container, const nrName& fieldName);
  static unsigned char readNerioField(FileState& file, nrField* field);
  static unsigned char readSFNode(FileState& file, nrContainer*& object);
  static unsigned char readMFField(FileState& file, nrMField* field);
  // The elements of a value list, stored by index straight into the field's
  // array; the field learns of the change once, at the end.
  template <typename Field>
  static unsigned char readMFValues(FileState& file, Field* field);
  // Element index of array; end becomes the index after the last element
  // stored. 1 when stored, -1 when no element could be read.
  template <typename A>
  static int readMFElt(FileState& file, A& array, unsigned index, unsigned& end);
  static unsigned char readMFNodes(FileState& file, nrMField* field);
  static unsigned char readRoute(FileState& file);
  static void flushInput(FileState& file);

  static void convert(nrContainer* object, int conversion);
  static void freeFields(FileState& file, nrContainer* root);
};
