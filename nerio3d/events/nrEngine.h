// Base of the lazily evaluated engines: every input feeds the engine's trigger
// field, and a read of an output after an input changed runs eval() once.
#pragma once

#include "nerio3d/nodes/nrNode.h"

class nrEngine : public nrNode {
  NR_DECLARE_TYPE(nrEngine)

  enum FieldEnum { TRIGGER_FIELD = 2 };

  nrEngine() : nrEngine(getClassType()) {}
  explicit nrEngine(nrType* type);
  ~nrEngine() override;

  using nrContainer::clone;
  using nrContainer::copy;
  // Copies values and routes; the copy keeps its own inputs wired to its own
  // trigger and its own outputs marked as engine outputs.
  void copy(nrContainer* from, nrCloneTable* table) override;

  // Computes and sets the outputs from the inputs; the base computes nothing.
  virtual void eval() {}

  // True when c is an engine and index is one of its type's outputs.
  static bool isEngineOutput(nrContainer* c, short index);

  int getNumInputs() const { return static_cast<int>(inputs.getCount()); }
  // Null for an index outside the list.
  nrField* getInput(int i) const { return static_cast<unsigned>(i) < inputs.getCount() ? inputs[i] : nullptr; }
  int getNumOutputs() const { return static_cast<int>(outputs.getCount()); }
  nrField* getOutput(int i) const { return static_cast<unsigned>(i) < outputs.getCount() ? outputs[i] : nullptr; }

 protected:
  // Builds the instance lists from the type and routes each input into the
  // trigger. The constructor of the class that registered the object's type
  // calls it once the defaults are set, when every field exists; a subclass
  // with a type of its own calls it in its own constructor.
  void initEngine();
  // Pulls the stale inputs, runs eval() and clears the outputs and the trigger.
  void evalWrapper();
  void cleanFieldInputs(nrField* field) override;
  void dirtyFieldOutputs(nrField* field) override;

  int trigger;
  nrFieldArray inputs;
  nrFieldArray outputs;

 private:
  nrField* triggerField;
  bool busy;
  bool evaluating;
};
