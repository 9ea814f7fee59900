#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "nerio3d/arrays/nrEventArray.h"
#include "nerio3d/core/nrNameEntry.h"
#include "nerio3d/fields/nrDirtyField.h"
#include "nerio3d/fields/nrMFRefInfo.h"
#include "nerio3d/fields/nrSFFloatInfo.h"
#include "nrFieldTestTypes.h"

using nrtest::field;
using nrtest::fieldLine;

TEST(nrFieldInfo, FreshContainerHoldsEveryDefaultAndWritesNothing) {
  tstAll* c = nrtest::held<tstAll>();
  for (int i = 0; i < tstAll::NUM_FIELDS; ++i) {
    EXPECT_TRUE(c->getType()->getFieldInfo(i)->isDefault(c)) << i;
    EXPECT_EQ(fieldLine(c, i), "") << i;
  }
  // Descriptor kinds have headers of their own names, as the field classes do.
  EXPECT_EQ(static_cast<nrSFFloatInfo*>(c->getType()->getFieldInfo(tstAll::FLOAT))->getDefault(), 0.5f);
  EXPECT_TRUE(static_cast<nrMFRefInfo*>(c->getType()->getFieldInfo(tstAll::MFREF))->isDefault(c));
  c->unref();
}

namespace {
// Sets field `index` of c, of kind F, to v and returns the field's line.
template <typename F, typename V>
std::string setAndWrite(nrContainer* c, int index, const V& v) {
  field<F>(c, index)->set(v);
  return fieldLine(c, index);
}

std::string writeRoot(nrContainer* root, int times = 1) {
  return nrtest::writeToString([&](nrOutput* out) {
    for (int i = 0; i < times; ++i) out->write(root);
  });
}
}  // namespace

TEST(nrFieldInfo, NonDefaultValuesWriteNameAndValueInTheirKindsFormat) {
  tstAll* c = nrtest::held<tstAll>();
  EXPECT_EQ(setAndWrite<nrSFFloat>(c, tstAll::FLOAT, 1.5f), "  float 1.500000\n");
  EXPECT_EQ(fieldLine(c, tstAll::FLOAT, 0), "float 1.500000\n");
  EXPECT_EQ(setAndWrite<nrSFUInt>(c, tstAll::UINT, 255u), "  uint 0xff\n");
  EXPECT_EQ(setAndWrite<nrSFUByte>(c, tstAll::UBYTE, static_cast<unsigned char>(0x80)), "  ubyte 0x80\n");
  EXPECT_EQ(setAndWrite<nrSFShort>(c, tstAll::SHORT, static_cast<short>(-7)), "  short -7\n");
  EXPECT_EQ(setAndWrite<nrSFInt>(c, tstAll::INT, -40000), "  int -40000\n");
  EXPECT_EQ(setAndWrite<nrSFDouble>(c, tstAll::DOUBLE, 0.25), "  double 0.250000\n");
  EXPECT_EQ(setAndWrite<nrSFTime>(c, tstAll::TIME, 2.5), "  time 2.500000\n");
  EXPECT_EQ(setAndWrite<nrSFVec3f>(c, tstAll::VEC3F, nrVec3f(2, 2, 3)), "  vec3f 2 2 3\n");
  EXPECT_EQ(setAndWrite<nrSFVec4ub>(c, tstAll::VEC4UB, nrVec4ub(255, 255, 255, 0)), "  vec4ub 255 255 255 0\n");
  EXPECT_EQ(setAndWrite<nrSFBitMask>(c, tstAll::BITMASK, 0x100000005ull), "  bitMask 0x15\n");
  EXPECT_EQ(setAndWrite<nrSFName>(c, tstAll::NAME, nrName("abc")), "  name \"abc\"\n");
  // A set string prints "(null)" without quotes: long-standing string output.
  EXPECT_EQ(setAndWrite<nrSFString>(c, tstAll::STRING, nrString("text")), "  string (null)\n");
  nrRotation r(0, 0, 1, 0);
  r.angle = -0.0f;
  EXPECT_EQ(setAndWrite<nrSFRotation>(c, tstAll::ROTATION, r), "") << "components compare as numbers";
  // Enumerations write their name, or nothing after the field name for a value without one.
  EXPECT_EQ(setAndWrite<nrSFEnum>(c, tstAll::ENUM, 1), "  enum SECOND_TEST\n");
  EXPECT_EQ(setAndWrite<nrSFEnum>(c, tstAll::ENUM, 5), "  enum ");
  c->unref();
}

TEST(nrFieldInfo, ListsWriteOneIndentedLinePerElement) {
  tstAll* c = nrtest::held<tstAll>();
  nrMFFloat* f = field<nrMFFloat>(c, tstAll::MFFLOAT);
  f->append(1.0f);
  f->append(2.0f);
  EXPECT_EQ(fieldLine(c, tstAll::MFFLOAT), "  mfFloat [\n  1.000000,\n  2.000000,\n  ]\n");
  field<nrMFByte>(c, tstAll::MFBYTE)->set(0, static_cast<char>(0xFF));
  EXPECT_EQ(fieldLine(c, tstAll::MFBYTE, 0), "mfByte [\n0xffffffff,\n]\n");
  // Null references are skipped; a container writes itself in place.
  nrMFRef* refs = field<nrMFRef>(c, tstAll::MFREF);
  refs->append(nullptr);
  refs->append(new tstLeaf);
  EXPECT_EQ(fieldLine(c, tstAll::MFREF), "  mfRef [\n  \n  TestLeaf {\n  },\n  ]\n");
  field<nrSFRef>(c, tstAll::REF)->set(new tstLeaf);
  EXPECT_EQ(fieldLine(c, tstAll::REF), "  ref \n  TestLeaf {\n  }\n");
  f->setCount(0);
  EXPECT_EQ(fieldLine(c, tstAll::MFFLOAT), "");
  c->unref();
  EXPECT_EQ(tstLeaf::live, 0);
}

TEST(nrFieldInfo, LookupByNameAliasAndRouteSpellings) {
  tstAll* c = nrtest::held<tstAll>();
  nrField* f = c->getField(tstAll::FLOAT);
  for (const char* name : {"float", "weight", "set_float", "float_changed", "set_weight"})
    EXPECT_EQ(c->getField(name), f) << name;
  EXPECT_STREQ(f->getName(), "float");
  // "set_" in the middle still drops the first four characters.
  EXPECT_EQ(c->getField("offset_x"), c->getField(tstAll::ET_X));
  EXPECT_EQ(c->getField("set_nothing"), nullptr);
  EXPECT_EQ(c->getField(tstAll::NUM_FIELDS), nullptr);
  // Single- and multi-valued kinds share a type name but not their types.
  EXPECT_EQ(f->getType(), nrSFFloat::getClassType());
  EXPECT_EQ(c->getField(tstAll::MFFLOAT)->getType(), nrMFFloat::getClassType());
  EXPECT_TRUE(c->getField(tstAll::MFREF)->isOfType(nrMField::getClassType()));
  EXPECT_FALSE(c->getField(tstAll::REF)->isOfType(nrMField::getClassType()));
  EXPECT_STREQ(c->getType()->mapEnum(tstAll::INT, 0), "(nameless)");
  c->unref();
}

TEST(nrOutput, SharedContainersAreWrittenOnceThenUsed) {
  tstAll* root = nrtest::held<tstAll>();
  tstLeaf* leaf = new tstLeaf;
  nrtest::floatField(leaf, tstLeaf::VALUE)->set(2.0f);
  for (int i = 0; i < 2; ++i) nrtest::field<nrMFRef>(root, tstAll::MFREF)->append(leaf);

  const std::string once =
      "\nTestAll {\n  mfRef [\n  \n  DEF Obj0 TestLeaf {\n    value 2.000000\n  },\n  USE Obj0,\n  ]\n}";
  EXPECT_EQ(writeRoot(root), once);
  // Numbering restarts with every root written through the same writer.
  EXPECT_EQ(writeRoot(root, 2), once + once);

  // A named shared container is defined and used by its own name.
  leaf->setName("Lamp");
  std::string named = once;
  for (size_t at; (at = named.find("Obj0")) != std::string::npos;) named.replace(at, 4, "Lamp");
  EXPECT_EQ(writeRoot(root), named);
  root->unref();
}

TEST(nrOutput, HeadersOfSingleParentAndDefaultContainers) {
  tstLeaf* plain = nrtest::held<tstLeaf>();
  EXPECT_EQ(writeRoot(plain), "\nTestLeaf {\n}");
  // A name always gives a DEF, even without sharing.
  plain->setName("Solo");
  EXPECT_EQ(writeRoot(plain), "\nDEF Solo TestLeaf {\n}");
  plain->setName("");
  EXPECT_EQ(writeRoot(plain), "\nTestLeaf {\n}") << "an empty name is no name";
  plain->unref();

  tstAll* root = nrtest::held<tstAll>();
  tstLeaf* child = new tstLeaf;
  child->setName("Child");
  nrtest::field<nrSFRef>(root, tstAll::REF)->set(child);
  EXPECT_EQ(writeRoot(root), "\nTestAll {\n  ref \n  DEF Child TestLeaf {\n  }\n}");
  root->unref();

  // A type may leave indices without a field: writing, copying, cloning and
  // finding by name pass over them.
  static nrType* gapped = nullptr;
  if (!gapped) {
    gapped = new nrType(nrContainer::getClassType(), "TestGapped");
    nrSFFloat::addTypeField(gapped, "late", 1, 0.0f, nullptr);
  }
  nrContainer* sparse = new nrContainer(gapped);
  sparse->ref();
  nrtest::floatField(sparse, 1)->set(2.0f);
  EXPECT_EQ(writeRoot(sparse), "\nTestGapped {\n  late 2.000000\n}");
  nrContainer* copy = new nrContainer(gapped);
  copy->ref();
  copy->recursiveCopy(sparse, nullptr);
  EXPECT_EQ(nrtest::floatField(copy, 1)->get(), 2.0f);
  EXPECT_EQ(copy->findByName("none"), nullptr);
  nrtest::unref(copy, sparse);
}

TEST(nrOutput, PendingInputsArePulledBeforeWriting) {
  tstLeaf *source = nrtest::held<tstLeaf>(), *target = nrtest::held<tstLeaf>();
  source->connect(tstLeaf::VALUE, target, tstLeaf::VALUE);
  nrtest::floatField(source, tstLeaf::VALUE)->set(5.0f);
  EXPECT_FALSE(target->getStaleInputMask().isZero());
  EXPECT_EQ(writeRoot(target), "\nTestLeaf {\n  value 5.000000\n}");
  EXPECT_TRUE(target->getStaleInputMask().isZero());
  nrtest::unref(target, source);
}

TEST(nrOutput, WritesToAFileByPath) {
  const std::string path = "/tmp/nrOutputTest" + std::to_string(getpid());
  tstLeaf* leaf = nrtest::held<tstLeaf>();
  {
    nrOutput out(path.c_str());
    ASSERT_NE(out.getStream(), nullptr);
    out.write(leaf);
  }
  std::ifstream in(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "\nTestLeaf {\n}");
  unlink(path.c_str());
  // A path that cannot be opened leaves a writer that writes nothing.
  nrOutput none("/nonexistent/dir/x");
  none.setLevel(2);
  none.indent();
  none.write(leaf);
  nrtest::floatField(leaf, tstLeaf::VALUE)->set(2);
  leaf->getField(tstLeaf::VALUE)->write(&none);
  leaf->getType()->getFieldInfo(tstLeaf::VALUE)->write(&none, leaf);
  nrSphereBound().write(&none);
  leaf->unref();
}
