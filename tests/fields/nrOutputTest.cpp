#include "nerio3d/fields/nrOutput.h"

#include <gtest/gtest.h>
#include <unistd.h>

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
  static_cast<nrSFFloat*>(leaf->getField(tstLeaf::VALUE))->set(2.0f);
  nrMFRef* refs = static_cast<nrMFRef*>(root->getField(tstAll::MFREF));
  refs->append(leaf);
  refs->append(leaf);

  const std::string once =
      "\nTestAll {\n"
      "  mfRef [\n"
      "  \n"
      "  DEF Obj0 TestLeaf {\n"
      "    value 2.000000\n"
      "  },\n"
      "  USE Obj0,\n"
      "  ]\n"
      "}";
  EXPECT_EQ(writeRoot(root), once);
  // Numbering restarts with every root written through the same writer.
  EXPECT_EQ(writeRoot(root, 2), once + once);

  // A named shared container is defined and used by its own name.
  leaf->setName("Lamp");
  std::string named = writeRoot(root);
  EXPECT_NE(named.find("  DEF Lamp TestLeaf {\n"), std::string::npos) << named;
  EXPECT_NE(named.find("  USE Lamp,\n"), std::string::npos) << named;
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
  static_cast<nrSFRef*>(root->getField(tstAll::REF))->set(child);
  EXPECT_EQ(writeRoot(root), "\nTestAll {\n  ref \n  DEF Child TestLeaf {\n  }\n}");
  root->unref();
}

TEST(nrOutput, PendingInputsArePulledBeforeWriting) {
  tstLeaf* source = nrtest::held<tstLeaf>();
  tstLeaf* target = nrtest::held<tstLeaf>();
  source->connect(tstLeaf::VALUE, target, tstLeaf::VALUE);
  static_cast<nrSFFloat*>(source->getField(tstLeaf::VALUE))->set(5.0f);
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
  FILE* f = fopen(path.c_str(), "r");
  char text[64] = {};
  size_t n = fread(text, 1, sizeof text - 1, f);
  fclose(f);
  unlink(path.c_str());
  EXPECT_EQ(std::string(text, n), "\nTestLeaf {\n}");
  leaf->unref();
}
