#include "nerio3d/fields/nrOutput.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "nrFieldTestTypes.h"
#include "nrOutputCapture.h"

namespace {
std::string writeRoot(nrContainer* root, int times = 1) {
  return nrtest::writeToString([&](nrOutput* out) {
    for (int i = 0; i < times; ++i) out->write(root);
  });
}
}  // namespace

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
  plain->unref();

  tstAll* root = nrtest::held<tstAll>();
  tstLeaf* child = new tstLeaf;
  child->setName("Child");
  nrtest::field<nrSFRef>(root, tstAll::REF)->set(child);
  EXPECT_EQ(writeRoot(root), "\nTestAll {\n  ref \n  DEF Child TestLeaf {\n  }\n}");
  root->unref();
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
  leaf->unref();
}
