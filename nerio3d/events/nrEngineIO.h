// The shape shared by the engine classes that add one input list and one
// output "value" after it (the interpolator kinds, the selector, morph and
// transform engines): storage, defaults, wiring, accessors and registration.
#pragma once

#include <type_traits>
#include <utility>

#include "nerio3d/core/nrType.h"

template <typename Derived, typename Base, typename InField, typename OutField>
class nrEngineIO : public Base {
 public:
  typedef typename InField::Array InArray;
  typedef typename std::remove_pointer<decltype(std::declval<OutField&>().getStorage())>::type Out;

  // The output, brought up to date first: reading it after an input changed
  // evaluates the engine.
  const Out& getValue() const { return this->getFieldValue(value, Base::VALUE_FIELD); }
  void getValue(Out& v) const { v = getValue(); }

 protected:
  explicit nrEngineIO(nrType* typeOfClass) : Base(typeOfClass) {
    this->initFieldDefaults(Derived::getClassType());
    if (this->type == Derived::classType) this->initEngine();
  }
  ~nrEngineIO() override { this->destroyFieldContents(Derived::getClassType()); }

  void setInputList(const InArray& values) { static_cast<InField*>(this->getField(Base::VALUE_FIELD - 1))->set(values); }
  OutField* getValueField() { return static_cast<OutField*>(this->getField(Base::VALUE_FIELD)); }

  // Registers the input list `name` just before the output "value", whose
  // default (none for lists) follows.
  template <typename... Default>
  static void addIOFields(nrType* type, const char* name, Default... valueDefault) {
    short in[] = {Base::VALUE_FIELD - 1}, out[] = {Base::VALUE_FIELD};
    InField::addTypeField(type, name, in[0], &nrEngineIO::input);
    OutField::addTypeField(type, "value", out[0], valueDefault..., &nrEngineIO::value);
    type->setEngineIO(1, in, 1, out);
  }

  InArray input;
  Out value;
};
