// Base of the selector engines: value is the element `selector` of the input
// list. A selector outside the list sets nothing.
#pragma once

#include "nerio3d/events/nrEngine.h"

class nrSelectorEng : public nrEngine {
  NR_DECLARE_TYPE(nrSelectorEng)

  enum FieldEnum { SELECTOR_FIELD = 3, INPUT_FIELD, VALUE_FIELD };

  nrSelectorEng() : nrSelectorEng(getClassType()) {}
  explicit nrSelectorEng(nrType* type);
  ~nrSelectorEng() override;

  void setSelector(int i);
  int getSelector() const;

 protected:
  // Sets value (held in member) to input[selector] when selector is in range.
  template <typename Array, typename T>
  void select(const Array& input, T& member) {
    if (selector >= 0 && static_cast<unsigned>(selector) < input.getCount())
      setFieldValue(member, input[static_cast<unsigned>(selector)], VALUE_FIELD);
  }

  int selector;
};
