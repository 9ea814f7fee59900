#include "nerio3d/vl/vlDB.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "nerio3d/audio/nrAudioClip.h"
#include "nerio3d/audio/nrAudioSamples.h"
#include "nerio3d/audio/nrSound.h"
#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/geometry/nrShape.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/nodes/nrInline.h"
#include "nerio3d/nodes/nrSwitch.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrMaterial.h"
#include "nrCapture.h"
#include "nrOutputCapture.h"

namespace {

const std::string DATA = NR_TEST_FILES;

std::string readError(const std::string& message, int line) {
  char location[32];
  snprintf(location, sizeof location, "\tOccurred at line %3d", line);
  return "vl read error: " + message + "\n" + location + "\n";
}

// The text of a file after its header line.
struct Text {
  std::string body;
};

// A scene read from a file or from text, with what the read printed; the root
// is held while the scene lives.
struct Scene {
  nrContainer* root = nullptr;
  unsigned char ok = 0;
  std::string messages;

  explicit Scene(const std::string& path) { read(nullptr, path); }
  explicit Scene(Text text) {
    text.body.insert(0, "#VRML V2.0 utf8\n");
    FILE* stream = fmemopen(text.body.data(), text.body.size(), "r");
    read(stream, "");
    fclose(stream);
  }
  void read(FILE* stream, const std::string& path) {
    nrPtrArray list;
    messages = nrtest::captureStderr(
        [&] { ok = stream ? vlDB::readStream(stream, root, list) : vlDB::readFile(path.c_str(), root, list); });
    if (root) root->ref();
  }
  ~Scene() {
    if (root) root->unref();
  }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  nrGroup* group() const { return static_cast<nrGroup*>(root); }
  template <typename T = nrContainer>
  T* child(int i = 0) const {
    return static_cast<T*>(static_cast<nrContainer*>(group()->getChild(i)));
  }
  // The container defined under name anywhere below the root.
  template <typename T = nrContainer>
  T* named(const char* name) const {
    return static_cast<T*>(root->findByName(name));
  }
};

// The scene as the library's text output writes it.
std::string text(nrContainer* root) {
  return nrtest::writeToString([&](nrOutput* out) { out->write(root); });
}

template <typename F>
F* field(nrContainer* c, const char* name) {
  return static_cast<F*>(c->getField(name));
}

nrAppearance* appearanceOf(nrContainer* shape) { return static_cast<nrShape*>(shape)->getAppearance(); }

TEST(vlDB, EdgeCaseFilesPostTheirMessagesAndReadTheRest) {
  const std::string refused = readError("Unsupported class \"Viewpoint\"", 2) + readError("Unknown class \"Foo\"", 3);
  const std::string routes =
      readError("No node named T to route from", 2) + readError("No node named I to route to", 2) +
      readError("No field named fraction to route from", 7) + readError("No field named nothing to route to", 7) +
      readError("Expected ., got f", 8) + readError("Expected TO, got FROM", 9) +
      readError("Expected route source, got EOF", 11);
  const std::string defUse = readError("Unknown reference \"A\"", 2) + readError("Unknown reference \"B\"", 6) +
                             readError("Premature end of file after DEF", 8);
  // A single value that fails adds no message to the one the value's reading posts.
  const std::string booleans = readError("Unknown value (\"(must be TRUE or FALSE)\") for vlSFBool", 4) +
                               readError("Illegal value for vlSFBool: 2 (must be 0 or 1)", 5);
  auto notANode = [](const char* token, int line) {
    return readError(std::string("Expected a node or ROUTE; got \"") + token + "\"", line);
  };
  std::string statements = readError("This version of the parser does not parse PROTOs yet", 2) +
                           readError("Expected '{'; got '['", 2);
  for (const char* token : {"[", "]", "{", "}"}) statements += notANode(token, 2);
  statements += readError("This version of the parser does not parse EXTERNPROTOs yet", 3) +
                readError("Expected '{'; got '['", 3);
  for (const char* token : {"[", "]", "bush.wrl"}) statements += notANode(token, 3);
  statements += readError("Couldn't read value for field \"children\"", 5) + notANode("]", 5) + notANode("}", 5) +
                readError("Expected '{'; got '}'", 6) + readError("Expected '}'; got '5'", 7) + notANode("}", 8);
  const std::string textures =
      "Reading texture map, orange.png, 2 2, 3\nReading texture map, orange.png, 2 2, 3\n"
      "Reading texture map, gray.png, 2 2, 1\n";

  struct Case {
    const char* file;
    unsigned char ok;
    std::string messages;
    std::function<void(const Scene&)> check;
  } cases[] = {
      {"transform.wrl", 1, "",
       [](const Scene& s) {
         ASSERT_EQ(s.group()->getNumChildren(), 1);
         nrVec3f t;
         s.child<nrTransform>(0)->getTranslation(&t[0], &t[1], &t[2]);
         EXPECT_EQ(t, nrVec3f(1, 2, 3));
       }},
      {"refused.wrl", 1, refused,
       [](const Scene& s) {
         ASSERT_EQ(s.group()->getNumChildren(), 1);
         EXPECT_EQ(s.child()->getType(), nrGroup::getClassType());
       }},
      {"routes.wrl", 0, routes,
       [](const Scene& s) {
         nrField* fraction = s.named("T")->getField("fraction_changed");
         ASSERT_EQ(fraction->getNumOutputs(), 1);
         EXPECT_EQ(fraction->getOutput(0), s.named("I")->getField("fraction"));
       }},
      {"def-use.wrl", 0, defUse,
       [](const Scene& s) {
         nrGroup* a = s.named<nrGroup>("A");
         EXPECT_EQ(a->getNumChildren(), 0);
         EXPECT_EQ(s.named("Absent"), nullptr);
         EXPECT_EQ(s.root->findByName(nullptr), nullptr);
         // The material, not a node, is no child of the root.
         ASSERT_EQ(s.group()->getNumChildren(), 4);
         for (int i : {1, 2}) EXPECT_EQ(appearanceOf(s.child(i))->getMaterial(), s.named<nrMaterial>("M")) << i;
         ASSERT_EQ(s.child<nrGroup>(3)->getNumChildren(), 1);
         EXPECT_EQ(s.child<nrGroup>(3)->getChild(0), a);
       }},
      {"lists.wrl", 1,
       "nrMFRef::set(int, nrContainer*): Bad type - Material not derived from Node.  parent (null) type Group\n",
       [](const Scene& s) {
         const nrFloatArray& key = field<nrMFFloat>(s.named("P"), "key")->getArray();
         EXPECT_EQ(std::vector<float>(key.getArray(), key.getArray() + key.getCount()),
                   (std::vector<float>{2, 0.5f, 1}));
         const nrVec3fArray& values = field<nrMFVec3f>(s.named("P"), "keyValue")->getArray();
         EXPECT_EQ(std::vector<nrVec3f>(values.getArray(), values.getArray() + values.getCount()),
                   (std::vector<nrVec3f>{nrVec3f(5, 5, 5), nrVec3f(2, 2, 2)}));
         EXPECT_EQ(s.named<nrGroup>("G")->getNumChildren(), 1);
         // The NULL and the refused material are not stored but use up their index.
         nrGroup* q = s.named<nrGroup>("Q");
         ASSERT_EQ(q->getNumChildren(), 4);
         EXPECT_EQ(std::pair(q->getChild(0), q->getChild(2)), (std::pair<nrNode*, nrNode*>()));
         for (int i : {1, 3}) EXPECT_EQ(q->getChild(i)->getType(), nrShape::getClassType()) << i;
       }},
      {"booleans.wrl", 1, booleans,
       [](const Scene& s) {
         for (const char* name : {"A", "B"}) {
           EXPECT_EQ(s.named<nrTimeSensor>(name)->getLoop(), 1) << name;
           EXPECT_EQ(s.named<nrTimeSensor>(name)->getEnabled(), 0) << name;
         }
         EXPECT_EQ(std::pair(s.named("C"), s.named("D")), (std::pair<nrContainer*, nrContainer*>()));
         EXPECT_EQ(s.named<nrSwitch>("S")->getWhichChild(), 31);
       }},
      {"statements.wrl", 1, statements,
       [](const Scene& s) {
         // The prototype's body, the shape without a box, the last group.
         ASSERT_EQ(s.group()->getNumChildren(), 3);
         EXPECT_EQ(s.child()->getType(), nrGroup::getClassType());
         EXPECT_EQ(s.child<nrShape>(1)->getGeometryCount(), 0);
       }},
      {"textures.wrl", 1, textures,
       [](const Scene& s) {
         nrAppearance* app[6];
         for (int i = 0; i < 6; ++i) app[i] = appearanceOf(s.child(i));
         EXPECT_EQ(app[0]->getTexture(), app[1]->getTexture());
         EXPECT_NE(app[2]->getTexture(), app[0]->getTexture());
         EXPECT_EQ(app[0]->getTexEnv(), nrContext::REPLACE_TENV);
         EXPECT_EQ(app[2]->getTexEnv(), nrContext::MODULATE_TENV);
         const int texturing[] = {1, 1, 1, 0, 0, 0}, lighting[] = {0, 1, 1, 1, 0, 0};
         for (int i = 0; i < 6; ++i) {
           EXPECT_EQ(app[i]->getTexEnable(), texturing[i]) << i;
           EXPECT_EQ(app[i]->getLightEnable(), lighting[i]) << i;
         }
         // Shapes without an appearance share one.
         EXPECT_EQ(app[4], app[5]);
       }},
      {"face-set.wrl", 1, "",
       [](const Scene& s) {
         auto* set = static_cast<nrIndexedFaceSet*>(s.child<nrShape>(0)->getGeometry(0));
         EXPECT_NE(set->getNormalSet(), nullptr);
         EXPECT_EQ(std::tuple(set->getNormalBind(), set->getTexCoordBind(), set->getColorBind(), set->getBoundMode()),
                   std::tuple(nrGeoSet::PER_VERTEX_NORMAL, nrGeoSet::PER_VERTEX_TEX_COORD, nrGeoSet::NO_COLOR,
                              nrGeometry::STATIC));
       }},
      {"crease.wrl", 1, "",
       [](const Scene& s) {
         const unsigned normals[] = {24, 8};
         for (int i = 0; i < 2; ++i) {
           auto* set = static_cast<nrIndexedFaceSet*>(s.child<nrShape>(i)->getGeometry(0));
           EXPECT_EQ(static_cast<nrNormalSet3f*>(set->getNormalSet())->getCount(), normals[i]) << i;
         }
       }},
      {"inline.wrl", 1, "vl error in vlDB::readNodeInstance(): Reading Inline transform.wrl\n",
       [](const Scene& s) {
         nrInline* node = s.child<nrInline>(0);
         EXPECT_EQ(node->getWhichChild(), 0);
         ASSERT_EQ(node->getNumChildren(), 1);
         auto* inlined = static_cast<nrGroup*>(node->getChild(0));
         EXPECT_EQ(inlined->getChild(0)->getType(), nrTransform::getClassType());
       }},
      {"self-inline.wrl", 1,
       "vl error in vlDB::readNodeInstance(): Reading Inline self-inline.wrl\n"
       "vl error in vlDB::readFile(): self-inline.wrl is inlined within itself\n",
       [](const Scene& s) {
         EXPECT_EQ(static_cast<nrInline*>(s.child<nrGroup>(0)->getChild(0))->getNumChildren(), 0);
       }},
      {"audio.wrl", 1, "nrAudioSamples::load(): cannot load \"beep.wav\": no audio support on this platform\n",
       [](const Scene& s) {
         nrAudioSamples* samples = s.child<nrSound>(0)->getSource()->getSamples();
         ASSERT_NE(samples, nullptr);
         EXPECT_STREQ(samples->getFileName(), "beep.wav");
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file);
    Scene scene(DATA + "/" + c.file);
    ASSERT_NE(scene.root, nullptr);
    EXPECT_EQ(scene.ok, c.ok);
    EXPECT_EQ(scene.messages, c.messages);
    c.check(scene);
  }
}

TEST(vlDB, StatementsCutShortNameWhatIsMissingAndLongListsGrow) {
  auto notANode = [](const char* token) {
    return readError(std::string("Expected a node or ROUTE; got \"") + token + "\"", 2);
  };
  const std::string sensor = "DEF T TimeSensor {} ROUTE ";
  const std::pair<std::string, std::string> cases[] = {
      {"USE", readError("Premature end of file after USE", 2)},
      {"DEF A", readError("Premature end of file after DEF", 2)},
      {"DEF { }", readError("No name given after", 2) + notANode("{") + notANode("}")},
      {"DEF A { }", readError("Invalid definition of A", 2) + notANode("{") + notANode("}")},
      {"Group", readError("Expected '{'; got EOF", 2)},
      {"Group {", readError("Expected '}'; got EOF", 2)},
      {"ROUTE", readError("Expected node name, got EOF", 2)},
      {sensor + "T", readError("Expected ., got EOF", 2)},
      {sensor + "T.time", readError("Expected TO, got EOF", 2)},
      {sensor + "T.time TO T", readError("Expected ., got EOF", 2)},
      {sensor + "T.time TO T.", readError("Expected route destination, got EOF", 2)},
  };
  for (const auto& [body, expected] : cases) EXPECT_EQ(Scene(Text{body}).messages, expected) << body;

  // Four-component values, and lists read element by element past the
  // initial room of their arrays.
  std::string urls, rotations;
  for (int i = 0; i < 40; ++i) {
    urls += " \"u" + std::to_string(i) + "\"";
    rotations += " 0 0 2 " + std::to_string(i);
  }
  Scene lists(Text{"Shape { appearance Appearance { blendColor 0.25 0.5 0.75 1 } }\n"
                   "Inline { url [" + urls + " ] }\n"
                   "OrientationInterpolator { keyValue [" + rotations + " ] }"});
  ASSERT_EQ(lists.group()->getNumChildren(), 3);
  EXPECT_EQ(appearanceOf(lists.child(0))->getBlendColor(), nrVec4f(0.25f, 0.5f, 0.75f, 1));
  const nrStringArray& url = field<nrMFString>(lists.child(1), "url")->getArray();
  ASSERT_EQ(url.getCount(), 40u);
  EXPECT_STREQ(url[39].getString(), "u39");
  const nrRotationArray& keyValue = field<nrMFRotation>(lists.child(2), "keyValue")->getArray();
  ASSERT_EQ(keyValue.getCount(), 40u);
  EXPECT_EQ(keyValue[39], nrRotation(0, 0, 1, 39));

  // The text output writes an enumeration value without a name as nothing:
  // the next field's name follows.
  Scene unnamed(Text{"Switch { boundMode whichChild 0 }"});
  EXPECT_EQ(unnamed.messages, "");
  ASSERT_EQ(unnamed.group()->getNumChildren(), 1);
  EXPECT_EQ(unnamed.child<nrSwitch>(0)->getWhichChild(), 0);
}

TEST(vlDB, FilesThatCannotBeReadGiveNoRoot) {
  nrContainer* root = nullptr;
  nrPtrArray list;
  std::string messages = nrtest::captureStderr([&] { EXPECT_EQ(vlDB::readFile("no-such-file.wrl", root, list), 0); });
  EXPECT_EQ(messages, "");
  EXPECT_EQ(root, nullptr);
  // A directory is found but cannot be read; the arguments of the message
  // stand in their long-standing order.
  messages = nrtest::captureStderr([&] { EXPECT_EQ(vlDB::readFile(DATA.c_str(), root, list), 0); });
  EXPECT_EQ(messages, "vl error in Can't open file: %s\n(): " + DATA + "\n");
  EXPECT_EQ(root, nullptr);
}

TEST(vlDB, HostileInputReadsToItsEnd) {
  std::string nested;
  for (int i = 0; i < 300; ++i) nested += "Group { children [ ";
  for (int i = 0; i < 300; ++i) nested += "] } ";
  Scene deep(Text{nested});
  EXPECT_EQ(deep.messages, readError("Nodes nested deeper than 200 levels", 2));
  int depth = 0;
  for (nrGroup* g = deep.group(); g->getNumChildren(); g = static_cast<nrGroup*>(g->getChild(0))) ++depth;
  EXPECT_EQ(depth, 200);

  // Inputs that once broke the reader.
  std::string regressions = DATA + "/fuzz-regressions";
  DIR* dir = opendir(regressions.c_str());
  ASSERT_NE(dir, nullptr);
  while (dirent* entry = readdir(dir)) {
    if (entry->d_name[0] == '.') continue;
    SCOPED_TRACE(entry->d_name);
    Scene scene(regressions + "/" + entry->d_name);
    EXPECT_NE(scene.root, nullptr);
    // Route cycles end at their first busy field, never at the depth limit.
    EXPECT_EQ(scene.messages.find("too deep"), std::string::npos);
    nrOutput("/dev/null").write(scene.root);
  }
  closedir(dir);
}

// A scratch directory, with the sample files' directory on the search path
// so that the scenes written there find their textures and inlines.
class vlDBCopies : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(mkdtemp(dir), nullptr);
    nrGlobal::setFilePath(DATA.c_str());
  }
  void TearDown() override {
    nrGlobal::setFilePath(nullptr);
    rmdir(dir);
  }

  char dir[32] = "/tmp/vlDBTest-XXXXXX";
};

TEST_F(vlDBCopies, GzipFilesAndWrittenScenesReadBackEqual) {
  for (std::string name : {"transform.wrl", "refused.wrl", "routes.wrl", "def-use.wrl", "lists.wrl", "booleans.wrl",
                           "statements.wrl", "textures.wrl", "face-set.wrl", "crease.wrl", "inline.wrl", "audio.wrl",
                           "city.wrl", "anim.wrl", "scene.wrl", "scene-part.wrl", "odd-values.wrl"}) {
    SCOPED_TRACE(name);
    const std::string original = DATA + "/" + name, copy = std::string(dir) + "/" + name, packed = copy + ".gz";
    std::ifstream in(original);
    std::stringstream content;
    content << in.rdbuf();
    gzFile gz = gzopen(packed.c_str(), "wb");
    gzwrite(gz, content.str().data(), unsigned(content.str().size()));
    gzclose(gz);
    // The plain scene is gone before the written copy is read, so that the
    // copy shares no textures with it. Writing pulls routed values, after the
    // bounds above them were written: the second text is the settled one.
    std::string first;
    {
      Scene plain(original), compressed(packed);
      EXPECT_EQ(compressed.ok, plain.ok);
      EXPECT_EQ(compressed.messages, plain.messages);
      EXPECT_EQ(text(compressed.root), text(plain.root));
      first = text(plain.root);
    }
    std::ofstream(copy) << "#VRML V2.0 utf8\n" << first;
    Scene again(copy);
    unlink(packed.c_str());
    unlink(copy.c_str());
    EXPECT_EQ(again.ok, 1);
    EXPECT_EQ(again.messages.find("vl read error"), std::string::npos) << again.messages;
    ASSERT_EQ(again.group()->getNumChildren(), 1);
    EXPECT_EQ(text(again.group()->getChild(0)), first);
  }

  // A compressed file cut short is reported, not read as a shorter scene.
  std::string many = "#VRML V2.0 utf8\n";
  for (int i = 0; i < 200; ++i) many += "Transform { translation 1 2 3 }\n";
  const std::string cut = std::string(dir) + "/cut.wrl.gz";
  gzFile gz = gzopen(cut.c_str(), "wb");
  gzwrite(gz, many.data(), unsigned(many.size()));
  gzclose(gz);
  struct stat status;
  ASSERT_EQ(stat(cut.c_str(), &status), 0);
  ASSERT_EQ(truncate(cut.c_str(), status.st_size / 2), 0);
  Scene shortened(cut);
  unlink(cut.c_str());
  EXPECT_EQ(shortened.ok, 0);
  ASSERT_NE(shortened.root, nullptr);
  const std::string reported = "vl error in vlDB::readFile(): " + cut + " could not be read to its end\n";
  ASSERT_GE(shortened.messages.size(), reported.size());
  EXPECT_EQ(shortened.messages.substr(shortened.messages.size() - reported.size()), reported);
}

}  // namespace
