// Base of the typed field handles: owner and index, stale/busy flags, the route
// lists, and the process-wide list of fields with pending values.
#pragma once

#include <cstdint>

#include "nerio3d/arrays/nrFieldArrays.h"
#include "nerio3d/core/nrBlockAllocator.h"
#include "nerio3d/core/nrTypeMacros.h"

class nrContainer;
class nrCloneTable;
class nrFieldInfo;
class nrOutput;

class nrField {
  NR_DECLARE_TYPE(nrField)

  // Plain fields take part in routes both ways; engines give their outputs
  // ENGINE_OUTPUT_EVENT, whose changes are forwarded along the outputs.
  enum EventClassEnum { PLAIN_EVENT = 0, INPUT_ONLY_EVENT = 1, OUTPUT_ONLY_EVENT = 2, ENGINE_OUTPUT_EVENT = 3 };
  enum FlagEnum { STALE_FLAG = 0x1, BUSY_FLAG = 0x2 };
  // Staleness is pushed and values pulled by nested calls, one per field of a
  // chain of routes: past this many a chain stops, with a warning, well
  // before the stack runs out.
  static const int MAX_ROUTE_DEPTH = 4096;

  virtual ~nrField();
  nrField(const nrField&) = delete;
  nrField& operator=(const nrField&) = delete;

  NR_POOLED_OBJECTS

  virtual nrType* getType() const { return getClassType(); }
  // Takes the value of another field of the same kind (no-op for other kinds).
  virtual void copy(nrField* from) = 0;
  // Writes the value alone, in the kind's text format.
  virtual void write(nrOutput* out) = 0;
  virtual bool isDefault();

  bool isOfType(const nrType* t) const;
  nrContainer* getContainer() const { return container; }
  short getIndex() const { return index; }
  const char* getName() const;
  nrFieldInfo* getFieldInfo() const;

  void setEventClass(EventClassEnum c) { eventClass = static_cast<unsigned char>(c); }
  void setEventClass(int c) { setEventClass(static_cast<EventClassEnum>(c)); }
  EventClassEnum getEventClass() const { return static_cast<EventClassEnum>(eventClass); }

  // Routes: this field feeds `to`; refused silently for an input-only source,
  // an output-only destination, or a route that exists already. Kinds are not
  // checked (engines route inputs of every kind to their trigger): a route
  // between fields of different kinds carries staleness but no value.
  void connect(nrField* to);
  void disconnect(nrField* to);
  int getNumInputs() const { return inputs ? static_cast<int>(inputs->getCount()) : 0; }
  // Null past the inputs or outputs.
  nrField* getInput(int i) const {
    return i >= 0 && i < getNumInputs() ? (*inputs)[static_cast<unsigned>(i)] : nullptr;
  }
  int getNumOutputs() const { return outputs ? static_cast<int>(outputs->getCount()) : 0; }
  nrField* getOutput(int i) const {
    return i >= 0 && i < getNumOutputs() ? (*outputs)[static_cast<unsigned>(i)] : nullptr;
  }
  nrField* getSource() const { return source; }

  // The stale-input bit of an index: 1 << (index mod 32) as a 32-bit value,
  // sign-extended to 64 bits (index 31 therefore covers the whole high word).
  static unsigned long long staleBit(short index) {
    int32_t bit = static_cast<int32_t>(1u << (index & 31));
    return static_cast<unsigned long long>(static_cast<int64_t>(bit));
  }
  bool isDirty() const { return flags & STALE_FLAG; }
  bool isBusy() const { return flags & BUSY_FLAG; }
  void setBusy(bool on) { flags = on ? (flags | BUSY_FLAG) : (flags & ~BUSY_FLAG); }
  // Marks or clears the pending value and the owner's stale-input bit.
  void setDirty(bool on);
  // Pushes staleness to every destination, stopping at busy ones.
  void dirtyOutputs();
  void setSource(nrField* f) { source = f; }

  // Reproduces on `to` (this field's clone) the routes of this field whose
  // other end has been cloned too; the first end seen is parked in the table.
  void copyConnections(nrField* to, nrCloneTable* table);

  static void enableDirtyFieldTracking(bool on);
  static bool isDirtyFieldTrackingEnabled();
  // Brings every recorded field up to date.
  static void cleanFields();

 protected:
  nrField(nrContainer* owner, short index);

  // Called by the kinds: bring the value up to date before a read, and report a change.
  void validate() const;
  void changed();
  // Reports a change of a list or reference: to the owner, or, for an engine
  // output, by applying the same change to each destination of the same kind.
  // A busy field forwards nothing, so forwarding cycles end.
  template <typename Field, typename Op>
  void forwardOrNotify(Op op) {
    if (eventClass != ENGINE_OUTPUT_EVENT) {
      changed();
      return;
    }
    if (isBusy()) return;
    setBusy(true);
    for (int i = 0; i < getNumOutputs(); ++i) {
      nrField* to = getOutput(i);
      if (to->getType() == getType()) op(static_cast<Field*>(to));
    }
    setBusy(false);
  }


 private:
  friend class nrContainer;
  void recordDirty();
  static void pushDirty(nrField* f);

  nrContainer* container;
  short index;
  unsigned char flags;
  unsigned char eventClass;
  nrField* source;
  nrFieldArray* inputs;
  nrFieldArray* outputs;
};

// A node of the dirty-field list.
struct nrDirtyField {
  nrDirtyField* next;
  nrField* field;
};
