// Base of every object with named, typed fields: owns its field objects, knows
// its parents, and drives change propagation (push stale, pull value).
#pragma once

#include <initializer_list>

#include "nerio3d/arrays/nrFieldArrays.h"
#include "nerio3d/core/nrBitMask.h"
#include "nerio3d/core/nrObject.h"
#include "nerio3d/fields/nrField.h"

class nrCloneTable;
class nrData;

class nrContainer : public nrObject {
  NR_DECLARE_TYPE(nrContainer)

  // SHALLOW_CLONE and COPY_CLONE both copy the values and share referenced
  // containers; DEEP_CLONE clones referenced containers too, keeping shared
  // ones shared in the copy.
  enum CloneEnum { SHALLOW_CLONE = 0, COPY_CLONE = 1, DEEP_CLONE = 2 };

  nrContainer() : nrContainer(getClassType()) {}
  explicit nrContainer(nrType* type);
  ~nrContainer() override;

  // A new default instance of the same class; null for abstract classes. A
  // plain container is itself concrete.
  virtual nrContainer* instantiate() { return getType() == getClassType() ? new nrContainer : nullptr; }
  // Refused with a warning when from refers to this container or to one that
  // holds it: taken over, the reference would close a cycle.
  virtual void copy(nrContainer* from, nrCloneTable* table);
  virtual void copy(nrContainer* from);
  virtual nrContainer* clone(CloneEnum mode, nrCloneTable* table);
  virtual nrContainer* clone(CloneEnum mode);
  // The modes by number: 0 and 1 copy, any other clones referenced containers.
  nrContainer* clone(int mode, nrCloneTable* table) { return clone(static_cast<CloneEnum>(mode), table); }
  nrContainer* clone(int mode) { return clone(static_cast<CloneEnum>(mode)); }
  // Copies from, cloning what it refers to through the table.
  virtual void recursiveCopy(nrContainer* from, nrCloneTable* table);

  // The field object of index, created on first access; null past the type's fields.
  nrField* getField(int index);
  // By name or alias; "set_x" and "x_changed" find x. Null for a name the
  // type lacks. Cast the field to its kind (nrSFVec3f, nrMFFloat ...) to read
  // or set its value; isOfType tells the kind.
  nrField* getField(const char* name);
  int getNumFields() const;

  int getParentCount() const;
  nrContainer* getParent(int i) const;
  // True when this container is value or lies under it, through parents at
  // any depth: storing value in one of this container's reference fields
  // would then close a cycle, which traversals would follow forever.
  bool liesUnder(const nrContainer* value) const;

  void setUserData(nrData* data);
  nrData* getUserData() const { return userData; }
  // Keeps its own copy; null or "" leaves the container unnamed, since an
  // empty name could not be written after DEF. Written text reads back when
  // names start with a letter or '_' and go on with letters, digits and '_';
  // other names are kept as given, and vlDB refuses them after DEF.
  void setName(const char* name);
  const char* getName() const { return name; }
  // The first container named name met depth first from this one (itself
  // included) through reference fields such as a group's children, or null;
  // finds the nodes of a file read by vlDB by their DEF names.
  nrContainer* findByName(const char* name);

  void connect(short fromIndex, nrContainer* to, short toIndex);
  void disconnect(short fromIndex, nrContainer* to, short toIndex);

  // Writes the container as text: a header (with DEF, or USE when written
  // before), one line per field that differs from its default, and "}".
  void write(nrOutput* out) override;
  // As write, with typeName in the header in place of the type's own name:
  // the file format's name of a class whose registered name differs.
  void writeAs(nrOutput* out, const char* typeName);

  // Drops field objects that hold nothing of their own; values stay.
  void freeUnconnectedFields();

  const nrBitMask& getStaleInputMask() const { return staleInputs; }
  const nrBitMask& getSideEffectMask() const { return sideEffects; }
  virtual void fieldChanged(short index) { touchField(index); }
  virtual void childChanged(nrContainer*, short) {}
  // Pulls field's value from its source; marks field and what it feeds stale;
  // brings the value behind a side-effect bit up to date.
  virtual void cleanFieldInputs(nrField* field);
  virtual void dirtyFieldOutputs(nrField* field);
  virtual void cleanSideEffect(short) {}

 protected:

  // Stores value in the member that holds field index and signals the change.
  template <typename T>
  void setFieldValue(T& member, const T& value, short index) {
    member = value;
    fieldChanged(index);
  }
  // The member that holds field index, brought up to date first. Bringing a
  // routed value in does not change what the container stands for, so const
  // getters may use it too.
  template <typename T>
  const T& getFieldValue(const T& member, short index) const {
    const_cast<nrContainer*>(this)->validateField(index);
    return member;
  }

  void addField(nrField* field);
  void addParent(nrContainer* parent);
  int removeParent(nrContainer* parent);
  // References value and becomes its parent, then leaves old and releases it.
  void refer(nrContainer* old, nrContainer* value);
  void refer(nrContainer* value);
  void unrefer(nrContainer* old);
  // Edits of a list of containers this one refers to: every element added is
  // referred to, every element dropped unreferred. An index out of range
  // (up to the count for insertion, below it otherwise) changes nothing, and
  // appending ignores null; the caller reports the change of its field.
  void refListAppend(nrRefArray& list, nrContainer* value);
  void refListInsert(nrRefArray& list, int index, nrContainer* value);
  void refListSet(nrRefArray& list, int index, nrContainer* value);
  // A larger count fills with null elements.
  void refListSetCount(nrRefArray& list, int n);
  void refListRemove(nrRefArray& list, int index);
  // Remove or replace the first occurrence; its index, or -1 when absent.
  long refListRemove(nrRefArray& list, nrContainer* value);
  long refListReplace(nrRefArray& list, nrContainer* old, nrContainer* value);

  void validateField(short index);
  // Brings every stale field up to date, as a visit does before it looks at them.
  void cleanPendingFields() {
    if (!(sideEffects | staleInputs).isZero()) internalCleanFields(sideEffects | staleInputs);
  }
  void touchField(short index);
  void notifyParents(short index);
  void propagateSideEffect(short index);
  void internalCleanFields(nrBitMask mask);
  void initFieldDefaults(nrType* type);
  // Writes "USE ..." and returns 1 for a shared container written before;
  // otherwise writes the header line, raises the level and returns 0.
  int writeHeader(nrOutput* out) { return writeHeader(out, getType()->getName()); }
  int writeHeader(nrOutput* out, const char* typeName);
  // Lowers the level and writes the closing brace at it.
  void writeClose(nrOutput* out);
  // As write, with only the fields listed, for the classes of scene files:
  // their other fields are derived from these when the text is read back,
  // and their strings are written in quotes, as the reader takes them.
  void writeFields(nrOutput* out, std::initializer_list<short> indices);
  void destroyFieldContents(nrType* type);

 private:
  friend class nrField;
  friend class nrSFRef;
  friend class nrMFRef;
  friend class nrSFRefInfo;
  friend class nrMFRefInfo;

  enum { PARENT_ARRAY_FLAG = 0x1 };

  void validateKnownField(short index, nrField* field);
  bool copyClosesCycle(nrContainer* from, int n);

  nrFieldArray* fields;
  union {
    nrContainer* single;
    nrPtrArray* array;
  } parent;
  nrData* userData;
  nrBitMask staleInputs;
  nrBitMask sideEffects;
  char* name;
};
