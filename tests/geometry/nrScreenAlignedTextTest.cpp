#include <algorithm>
#include <climits>
#include <string>

#include "nerio3d/geometry/nrScreenAlignedText.h"
#include "nerio3d/platform/nrFont.h"
#include "nerio3d/render/_nrGfx.h"
#include "nrCapture.h"
#include "nrGeometryFixture.h"

namespace {

using nrtest::Calls;

class Text : public nrtest::GeometryTest {
 protected:
  nrScreenAlignedText* text(const char* chars, int face = nrScreenAlignedText::HELVETICA, int size = 12) {
    nrScreenAlignedText* t = make<nrScreenAlignedText>();
    t->setText(chars);
    t->setFace(face);
    t->setSize(size);
    t->setColor(1, 0, 0, 1);
    return t;
  }
  // Pixels other than the black background and their bounding box.
  struct Ink { int count = 0, minX = SIZE, minY = SIZE, maxX = -1, maxY = -1; };
  Ink ink() {
    Ink result;
    std::vector<uint32_t> pixels = frame();
    for (int y = 0; y < SIZE; ++y)
      for (int x = 0; x < SIZE; ++x)
        if (pixels[y * SIZE + x] != BLACK) {
          ++result.count;
          result.minX = std::min(result.minX, x);
          result.maxX = std::max(result.maxX, x);
          result.minY = std::min(result.minY, y);
          result.maxY = std::max(result.maxY, y);
        }
    return result;
  }
  static int count(const nrGLRecorder& rec, const char* prefix) { return static_cast<int>(only(rec, {prefix}).size()); }
};

TEST_F(Text, TextsOfOneFaceAndSizeShareListsThatOutliveTheirBuilder) {
  nrScreenAlignedText* a = text("A");
  nrScreenAlignedText* b = text("B");
  nrScreenAlignedText* larger = text("C", nrScreenAlignedText::HELVETICA, 20);
  nrGLRecorder rec;
  a->draw(action);
  b->draw(action);
  larger->draw(action);
  EXPECT_EQ(count(rec, "glNewList"), 2 * nrScreenAlignedText::CHAR_COUNT) << "one set for a and b, one for the larger";
  Calls bases = only(rec, {"glListBase"});
  ASSERT_EQ(bases.size(), 3u);
  EXPECT_EQ(bases[0], bases[1]);
  EXPECT_NE(bases[0], bases[2]);

  rec.clear();
  a->setText("changed");
  a->draw(action);
  b->draw(action);
  EXPECT_EQ(count(rec, "glNewList"), 0) << "a new text needs no new font";

  // The builder goes; the other text keeps drawing the same lists.
  owned.erase(std::find(owned.begin(), owned.end(), a));
  a->unref();
  rec.clear();
  clearFrame();
  b->draw(action);
  EXPECT_EQ(count(rec, "glNewList") + count(rec, "glDeleteLists"), 0);
  EXPECT_EQ(only(rec, {"glListBase"}), Calls{bases[0]});
  EXPECT_GT(ink().count, 0);

  // A new size is a new font.
  rec.clear();
  b->setSize(20);
  b->draw(action);
  EXPECT_EQ(count(rec, "glNewList"), 0) << "the larger text's lists are taken";
  EXPECT_EQ(only(rec, {"glListBase"}), Calls{bases[2]});
  std::string smallBase = bases[0].substr(11, bases[0].size() - 12);
  EXPECT_EQ(only(rec, {"glDeleteLists"}), Calls{"glDeleteLists(" + smallBase + ", 127)"})
      << "the last user of the small font left it";

  // Copying a text of another size into it takes that size's lists too.
  b->draw(action);
  rec.clear();
  b->copy(text("D", nrScreenAlignedText::HELVETICA, 12));
  b->draw(action);
  EXPECT_EQ(count(rec, "glNewList"), nrScreenAlignedText::CHAR_COUNT) << "the small font again";

  // A text moved to another size keeps its new size even when a newer text of
  // the old size draws the lists they shared first.
  nrScreenAlignedText* e = text("E");
  e->draw(action);
  e->setSize(20);
  nrScreenAlignedText* g = text("G");
  g->draw(action);
  g->draw(action);
  rec.clear();
  e->draw(action);
  EXPECT_EQ(only(rec, {"glListBase"}), Calls{bases[2]});
}

TEST_F(Text, DrawingSetsColourAndPositionAndRestoresTheStateItChanges) {
  const GLenum unpack[] = {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST,   GL_UNPACK_ROW_LENGTH,
                           GL_UNPACK_SKIP_ROWS,  GL_UNPACK_SKIP_PIXELS, GL_UNPACK_ALIGNMENT};
  const GLint before[] = {1, 1, 5, 2, 3, 8};
  for (int i = 0; i < 6; ++i) nrgl::PixelStorei(unpack[i], before[i]);
  context->setMaterialModeEnable(nrContext::COLOR_MATERIAL);

  nrScreenAlignedText* empty = text("");
  empty->setPosition(0.5f, 0, 0);
  nrGLRecorder rec;
  empty->draw(action);
  EXPECT_EQ(only(rec, {"glColor4f", "glRasterPos", "glCallLists", "glListBase"}),
            (Calls{"glColor4f(1, 0, 0, 1)", "glRasterPos3f(0.5, 0, 0)", "glColor4f(1, 1, 1, 1)"}));
  EXPECT_EQ(only(rec, {"glDisable(GL_COLOR_MATERIAL)"}).size(), 1u);
  EXPECT_EQ(context->getGlobalState().materialModeEnable, nrContext::COLOR_MATERIAL) << "not application state";

  // Codes from 127 up are left out; the text is drawn with tight unpacking.
  nrScreenAlignedText* label = text("A\xe9Z");
  label->draw(action);
  rec.clear();
  label->draw(action);
  Calls calls = only(rec, {"glCallLists", "glPixelStorei"});
  ASSERT_EQ(calls.size(), 13u);
  EXPECT_EQ(calls[5], "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)");
  EXPECT_EQ(calls[6], "glCallLists(2, GL_UNSIGNED_BYTE, ptr)");
  for (int i = 0; i < 6; ++i) EXPECT_EQ(getInt(unpack[i]), before[i]) << i;
  GLfloat current[4];
  nrgl::GetFloatv(GL_CURRENT_COLOR, current);
  EXPECT_EQ(std::vector<GLfloat>(current, current + 4), (std::vector<GLfloat>{1, 1, 1, 1}));

  // The box is a small one around the position; both vector forms read back.
  label->setPosition(nrVec3f(1, 2, 3));
  label->setColor(nrVec4f(0, 1, 0, 1));
  nrVec3f at;
  nrVec4f colour;
  label->getPosition(at);
  label->getColor(colour);
  EXPECT_EQ(std::pair(at, colour), std::pair(nrVec3f(1, 2, 3), nrVec4f(0, 1, 0, 1)));
  nrBoxBound box;
  label->getBoxBound(box);
  EXPECT_FLOAT_EQ(box.min[0], 0.9999f);
  EXPECT_FLOAT_EQ(box.max[2], 3.0001f);
}

TEST_F(Text, LabelsAppearAtTheProjectedPositionInTheirColourAtOneHeight) {
  nrgl::MatrixMode(GL_PROJECTION);
  nrgl::Frustum(-1, 1, -1, 1, 1, 100);
  nrgl::MatrixMode(GL_MODELVIEW);
  nrScreenAlignedText* label = text("HI");
  Ink seen[2];
  const float depths[2] = {2, 20};
  for (int i = 0; i < 2; ++i) {
    clearFrame();
    // Both project to window point (40, 24).
    label->setPosition(0.25f * depths[i], -0.25f * depths[i], -depths[i]);
    label->draw(action);
    seen[i] = ink();
    EXPECT_EQ(histogram().count(RED), 1u);
    EXPECT_EQ(histogram().size(), 2u) << "only red on black";
  }
  EXPECT_EQ(seen[0].minY, 24) << "the baseline";
  EXPECT_GE(seen[0].minX, 40);
  EXPECT_LE(seen[0].minX, 42);
  EXPECT_GE(seen[0].maxY - seen[0].minY + 1, 6);
  EXPECT_EQ(seen[0].maxY - seen[0].minY, seen[1].maxY - seen[1].minY);
  EXPECT_EQ(seen[0].count, seen[1].count);

  auto inkOf = [&](int face) {
    clearFrame();
    label->setFace(face);
    label->draw(action);
    return ink().count;
  };
  int regular = inkOf(nrScreenAlignedText::HELVETICA);
  EXPECT_GT(inkOf(nrScreenAlignedText::HELVETICA_BOLD), regular) << "bold";
}

TEST_F(Text, AFontThatCannotBeFoundDrawsNothingUntilTheTextChanges) {
  nrgl::ClearColor(0, 0, 1, 1);
  clearFrame();
  nrFont::setFamilyAlias("sans-serif", "No Such Family At All");
  nrScreenAlignedText* missing = text("HI");
  nrGLRecorder rec;
  std::string err = nrtest::captureStderr([&] {
    missing->draw(action);
    missing->draw(action);
  });
  nrFont::setFamilyAlias("sans-serif", nullptr);
  EXPECT_EQ(err, "(WARN, RESOURCE): nrScreenAlignedText::queryFont() - no font for face HELVETICA at size 12\n")
      << "looked up once";
  EXPECT_EQ(count(rec, "glCallLists"), 0);
  EXPECT_EQ(count(rec, "glDeleteLists"), 1);
  EXPECT_EQ(histogram(), (std::map<uint32_t, int>{{BLUE, SIZE * SIZE}}));

  missing->draw(action);
  EXPECT_EQ(count(rec, "glCallLists"), 0) << "the font is found again only after a change";
  missing->setText("HI!");
  missing->draw(action);
  EXPECT_EQ(count(rec, "glCallLists"), 1);
  EXPECT_GT(histogram()[RED], 0);

  // Face 9 at size 12 has the key of TIMES_ITALIC at 13 but no font.
  text("HI", nrScreenAlignedText::TIMES_ITALIC, 13)->draw(action);
  nrScreenAlignedText* unknown = text("HI", 9, 12);
  err = nrtest::captureStderr([&] { unknown->draw(action); });
  EXPECT_EQ(err, "(WARN, RESOURCE): nrScreenAlignedText::queryFont() - no font for face 9 at size 12\n");
  EXPECT_EQ(count(rec, "glCallLists"), 2);
  // Sizes no font is rendered at, nor a key computed for.
  for (int size : {40000, INT_MAX, INT_MIN}) {
    err = nrtest::captureStderr([&] { text("HI", nrScreenAlignedText::TIMES, size)->draw(action); });
    EXPECT_EQ(err, "(WARN, RESOURCE): nrScreenAlignedText::queryFont() - no font for face TIMES at size " +
                       std::to_string(size) + "\n");
  }
  EXPECT_EQ(count(rec, "glCallLists"), 2);
}

}  // namespace
