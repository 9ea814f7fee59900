#include "nerio3d/fields/nrMField.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrIndexedLineSet.h"
#include "nerio3d/render/_nrGfx.h"
#include "nrGeometryFixture.h"
#include "nrOutputCapture.h"

namespace {

using nrtest::Calls;
using IndexedSet = nrtest::GeometryTest;

// The left and right halves of the view as two quads over six points.
std::initializer_list<nrVec3f> halves = {{-1, -1, 0}, {0, -1, 0}, {0, 1, 0}, {-1, 1, 0}, {1, -1, 0}, {1, 1, 0}};
const int twoQuads[] = {0, 1, 2, 3, -1, 1, 4, 5, 2, -1};

std::vector<int> values(const nrIntArray& a) { return std::vector<int>(a.getArray(), a.getArray() + a.getCount()); }

TEST_F(IndexedSet, SolidAndCcwChooseTheSetsOwnCullFace) {
  struct Case { unsigned char solid, ccw; nrContext::CullFaceEnum face; } cases[] = {
      {0, 1, nrContext::NO_CULL}, {0, 0, nrContext::NO_CULL}, {1, 0, nrContext::FRONT_CULL}, {1, 1, nrContext::BACK_CULL}};
  for (const Case& c : cases) {
    nrIndexedFaceSet* s = make<nrIndexedFaceSet>();
    EXPECT_FALSE(s->getUserSetMask().isBitSet(nrGeoSet::CULL_FACE_SET_BIT));
    s->setSolid(c.solid);
    s->setCcw(c.ccw);
    EXPECT_EQ(s->getCullFace(), c.face) << int(c.solid) << int(c.ccw);
    EXPECT_TRUE(s->getUserSetMask().isBitSet(nrGeoSet::CULL_FACE_SET_BIT));
  }
}

TEST_F(IndexedSet, IndexListsConvertOnNextUseAndEmptyListsFollowTheCoordinates) {
  nrIndexedFaceSet* s = set<nrIndexedFaceSet>(halves, 0);
  s->setCoordIndex(10, twoQuads);
  EXPECT_FALSE(s->getSideEffectMask().isZero()) << "the conversion waits for the next use";
  EXPECT_EQ(s->getPrimCount(), 2);
  EXPECT_EQ(values(s->getLengths()), (std::vector<int>{4, 4}));
  EXPECT_EQ(values(s->getCoordIndexSet()->getArray()), (std::vector<int>{0, 1, 2, 3, 1, 4, 5, 2}));
  EXPECT_EQ(s->getBoxBound().max, nrVec3f(1, 1, 0));

  // A face set with only coordIndex shares one index list: vertex arrays.
  s->setNormalSet(normals({{0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}}));
  s->setColorSet(colors({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}, {1, 1, 0}, {0, 1, 1}}));
  EXPECT_EQ(drawn(s), Calls(2, "glDrawElements(GL_POLYGON, 4, GL_UNSIGNED_INT, ptr)"));
  EXPECT_EQ(s->getNormalIndexSet(), s->getCoordIndexSet());
  EXPECT_EQ(s->getColorIndexSet(), s->getCoordIndexSet());
  EXPECT_EQ(s->getStrategy(), nrGeoSet::ELEMENTS_STRATEGY);

  // A list of its own gives the attribute its own set; emptying it shares again.
  const int normalList[] = {5, 4, 3, 2, -1, 1, 0, 0, 0, -1};
  s->setNormalIndex(10, normalList);
  nrIndexSet* own = s->getNormalIndexSet();
  EXPECT_NE(own, s->getCoordIndexSet());
  EXPECT_EQ(values(own->getArray()), (std::vector<int>{5, 4, 3, 2, 1, 0, 0, 0}));
  EXPECT_EQ(s->getStrategy(), nrGeoSet::IMMEDIATE_STRATEGY);
  s->setNormalIndex(0, nullptr);
  EXPECT_EQ(s->getNormalIndexSet(), s->getCoordIndexSet());
  EXPECT_EQ(values(s->getCoordIndexSet()->getArray()).size(), 8u) << "the coordinates' indices are kept";
  s->setNormalIndex(10, normalList);
  EXPECT_EQ(s->getNormalIndexSet(), own) << "the own set is made once";

  // A new coordinate list moves the bound once the set is used.
  const int firstQuad[] = {0, 1, 2, 3};
  s->setCoordIndex(4, firstQuad);
  EXPECT_EQ(s->getBoxBound().max, nrVec3f(0, 1, 0));
  EXPECT_EQ(s->getPrimCount(), 1);
}

TEST_F(IndexedSet, ConvertedCoordinateListsStayIndexSetsWhileDrawnAndReadBackOrTakeEdits) {
  // freed: whether the index set alone keeps the list.
  const struct { std::vector<int> list; bool freed; } cases[] = {
      {{0, 1, 2, 3, -1, 1, 4, 5, 2, -1}, true}, {{0, 1, 2, -1, -1, 3, 4, 5, -1}, true},
      {{0, 1, 2, 3, -1, 1, 4, 5}, false},       {{0, 1, 2, -2, 3, 4, 5, -1}, false}};
  for (const auto& c : cases) {
    std::vector<int> edited = c.list;
    edited[1] = 5;
    for (bool edit : {false, true}) {
      nrIndexedFaceSet* s = set<nrIndexedFaceSet>(halves, 0);
      s->setCoordIndex(int(c.list.size()), c.list.data());
      s->draw(action);
      nrMFInt* field = static_cast<nrMFInt*>(s->getField(nrIndexedFaceSet::COORD_INDEX_FIELD));
      EXPECT_EQ(field->getStorage()->getCount() == 0, c.freed) << c.list.size();
      if (edit) field->set(1, 5);
      EXPECT_EQ(values(s->getCoordIndex()), edit ? edited : c.list);
      EXPECT_EQ(s->getCoordIndexSet()->getArray()[1], edit ? 5 : 1);
    }
  }
  // An index set taken away by the application leaves a freed list empty.
  nrIndexedFaceSet* bare = set<nrIndexedFaceSet>(halves, 0);
  bare->setCoordIndex(10, twoQuads);
  bare->draw(action);
  bare->setCoordIndexSet(nullptr);
  EXPECT_EQ(bare->getCoordIndex().getCount(), 0u);
  // A list routed into a set whose own list was converted and freed is
  // converted by the next draw.
  nrIndexedFaceSet* s = set<nrIndexedFaceSet>(halves, 0);
  s->setCoordIndex(10, twoQuads);
  s->draw(action);
  nrIndexedFaceSet* source = make<nrIndexedFaceSet>();
  const int secondQuad[] = {1, 4, 5, 2, -1};
  source->setCoordIndex(5, secondQuad);
  source->connect(nrIndexedFaceSet::COORD_INDEX_FIELD, s, nrIndexedFaceSet::COORD_INDEX_FIELD);
  EXPECT_EQ(drawn(s).size(), 1u);
  EXPECT_EQ(s->getPrimCount(), 1);
}

TEST_F(IndexedSet, PerFaceColoursComeFromTheirOwnIndexSet) {
  nrIndexedFaceSet* s = set<nrIndexedFaceSet>(halves, 0);
  s->setCoordIndex(10, twoQuads);
  s->setColorSet(colors({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
  s->setColorPerVertex(0);
  const int faceColors[] = {2, 1};
  s->setColorIndex(2, faceColors);
  s->setSolid(0);
  EXPECT_EQ(drawn(s, {"glColor3fv"}).size(), 2u);
  EXPECT_EQ(s->getColorBind(), nrGeoSet::PER_PRIM_COLOR);
  EXPECT_EQ(values(s->getColorIndexSet()->getArray()), (std::vector<int>{2, 1}));
  EXPECT_EQ(pixel(SIZE / 4, SIZE / 2), BLUE);
  EXPECT_EQ(pixel(3 * SIZE / 4, SIZE / 2), GREEN);
}

TEST_F(IndexedSet, LinesConvertAtOnceAndDrawWhiteWithoutLightOrTexture) {
  nrIndexedLineSet* s = set<nrIndexedLineSet>(halves, 0);
  const int lines[] = {0, 1, 2, -1, 3, 4};
  s->setCoordIndex(6, lines);
  EXPECT_EQ(s->getPrimCount(), 2);
  EXPECT_EQ(values(s->getLengths()), (std::vector<int>{3, 2}));
  s->setColorSet(colors({{1, 0, 0}}));
  EXPECT_EQ(s->getColorIndexSet(), s->getCoordIndexSet());
  const int colorList[] = {0, -1, 0};
  s->setColorIndex(3, colorList);
  s->setColorPerVertex(0);
  EXPECT_NE(s->getColorIndexSet(), s->getCoordIndexSet());
  EXPECT_EQ(values(s->getColorIndexSet()->getArray()), (std::vector<int>{0, 0}));
  s->setColorSet(nullptr);

  context->setLightEnable(1);
  context->setTexEnable(1);
  EXPECT_EQ(drawn(s, {"glColor3f(", "glEnable(", "glDisable("}),
            (Calls{"glColor3f(1, 1, 1)", "glDisable(GL_TEXTURE_2D)", "glDisable(GL_LIGHTING)",
                   "glEnable(GL_TEXTURE_2D)", "glEnable(GL_LIGHTING)"}));
  EXPECT_EQ(context->getShadowState().lightEnable, 1);
  EXPECT_EQ(context->getShadowState().texEnable, 1);
  EXPECT_TRUE(isOn(GL_LIGHTING));

  // Unlit, untextured state needs no push.
  context->setLightEnable(0);
  context->setTexEnable(0);
  EXPECT_EQ(drawn(s, {"glEnable(", "glDisable("}), Calls{});
}

TEST_F(IndexedSet, WrittenInVRMLFormAndClonedWithIndexSetsOfTheirOwn) {
  nrIndexedFaceSet* s = set<nrIndexedFaceSet>({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, 0);
  const int tri[] = {0, 1, 2, -1};
  s->setCoordIndex(4, tri);
  s->setSolid(0);
  auto written = [](nrContainer* c) { return nrtest::writeToString([&](nrOutput* out) { out->write(c); }); };
  std::string text = written(s);
  EXPECT_EQ(text.rfind("\nIndexedFaceSet {\n  coord \n  Coordinate {\n    point [\n", 0), 0u) << text;
  EXPECT_NE(text.find("\n  solid FALSE\n  coordIndex [\n  0,\n"), std::string::npos) << text;
  for (const char* derived : {"IndexSet", "Bind", "primCount", "polyLength", "cullFace", "boxBound", "ccw"})
    EXPECT_EQ(text.find(derived), std::string::npos) << derived << " in " << text;
  // Culling set from the flags survives a write even at the default: `solid TRUE` is kept.
  s->setSolid(1);
  text = written(s);
  EXPECT_NE(text.find("\n  solid TRUE\n"), std::string::npos) << text;
  s->setSolid(0);

  nrIndexedLineSet* lines = set<nrIndexedLineSet>({{0, 0, 0}, {1, 0, 0}}, 0);
  lines->setCoordIndex(2, tri);
  text = written(lines);
  EXPECT_EQ(text.rfind("\nIndexedLineSet {\n  coord \n", 0), 0u) << text;
  EXPECT_EQ(text.find("stripLength"), std::string::npos) << text;

  nrIndexedFaceSet* copy = keep(static_cast<nrIndexedFaceSet*>(s->clone(nrContainer::COPY_CLONE)));
  EXPECT_NE(copy->getCoordIndexSet(), s->getCoordIndexSet());
  EXPECT_EQ(values(copy->getCoordIndexSet()->getArray()), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(copy->getCullFace(), nrContext::NO_CULL);
  EXPECT_TRUE(copy->getUserSetMask().isBitSet(nrGeoSet::CULL_FACE_SET_BIT));
  const int none[] = {0, 0, 0};
  copy->setCoordIndex(3, none);
  EXPECT_EQ(values(s->getCoordIndexSet()->getArray()), (std::vector<int>{0, 1, 2})) << "the original keeps its own";
  // Copied into a set already in use, whose own list was converted and freed:
  // the copy takes the source's list, not one rebuilt from its old sets.
  const int back[] = {2, 1, 0, -1};
  copy->setCoordIndex(4, back);
  EXPECT_EQ(copy->getPrimCount(), 1);
  copy->copy(s);
  EXPECT_EQ(values(copy->getCoordIndex()), (std::vector<int>{0, 1, 2, -1}));
  EXPECT_EQ(values(copy->getCoordIndexSet()->getArray()), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(values(copy->getPolyLength()), (std::vector<int>{3}));

  nrIndexedLineSet* lineCopy = keep(static_cast<nrIndexedLineSet*>(lines->clone(nrContainer::DEEP_CLONE)));
  EXPECT_NE(lineCopy->getCoordIndexSet(), lines->getCoordIndexSet());
  EXPECT_EQ(lineCopy->getColorIndexSet(), lineCopy->getCoordIndexSet());
  EXPECT_EQ(lineCopy->getPrimCount(), 1);

  // Copying from null or from itself keeps the set's index sets.
  for (nrContainer* from : {static_cast<nrContainer*>(nullptr), static_cast<nrContainer*>(s)}) {
    s->copy(from);
    ASSERT_NE(s->getCoordIndexSet(), nullptr);
    EXPECT_EQ(values(s->getCoordIndexSet()->getArray()), (std::vector<int>{0, 1, 2}));
  }
}

}  // namespace
