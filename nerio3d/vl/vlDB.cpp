#include "nerio3d/vl/vlDB.h"

#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>

#include "nerio3d/audio/nrAudioClip.h"
#include "nerio3d/audio/nrAudioSamples.h"
#include "nerio3d/audio/nrSound.h"
#include "nerio3d/core/nrBlockAllocator.h"
#include "nerio3d/core/nrDict.h"
#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/events/nrColorInterpolator.h"
#include "nerio3d/events/nrCoordinateInterpolator.h"
#include "nerio3d/events/nrNormalInterpolator.h"
#include "nerio3d/events/nrOrientationInterpolator.h"
#include "nerio3d/events/nrPositionInterpolator.h"
#include "nerio3d/events/nrScalarInterpolator.h"
#include "nerio3d/events/nrPlaneSensor.h"
#include "nerio3d/events/nrSphereSensor.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/events/nrTouchSensor.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrColorSet3f.h"
#include "nerio3d/geometry/nrCone.h"
#include "nerio3d/geometry/nrCoordSet3f.h"
#include "nerio3d/geometry/nrCylinder.h"
#include "nerio3d/geometry/nrIndexSet.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrIndexedLineSet.h"
#include "nerio3d/geometry/nrLineSet.h"
#include "nerio3d/geometry/nrLineStripSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/geometry/nrPolySet.h"
#include "nerio3d/geometry/nrQuadSet.h"
#include "nerio3d/geometry/nrShape.h"
#include "nerio3d/geometry/nrSphere.h"
#include "nerio3d/geometry/nrTexCoordSet2f.h"
#include "nerio3d/geometry/nrTriSet.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/nodes/nrBillboard.h"
#include "nerio3d/nodes/nrCollision.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/nodes/nrInline.h"
#include "nerio3d/nodes/nrSwitch.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/platform/nrFileStream.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrDirectionalLight.h"
#include "nerio3d/render/nrEnvironment.h"
#include "nerio3d/render/nrImageTexture.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/render/nrPointLight.h"
#include "nerio3d/vl/vlDebugError.h"
#include "nerio3d/vl/vlGeom.h"
#include "nerio3d/vl/vlInput.h"
#include "nerio3d/vl/vlReadError.h"

namespace {

enum Conversion {
  NO_CONVERSION,
  SHAPE_CONVERSION,
  AUDIO_CLIP_CONVERSION,
  INLINE_CONVERSION,
  FACE_SET_CONVERSION,
  APPEARANCE_CONVERSION
};

template <typename C>
nrContainer* make() {
  return new C;
}

struct ClassEntry {
  const char* name;
  nrContainer* (*make)();
  Conversion conversion;
};

// The file's class names and the library classes they make.
const ClassEntry classTable[] = {
    {"LineSet", make<nrLineSet>, NO_CONVERSION},
    {"LineStripSet", make<nrLineStripSet>, NO_CONVERSION},
    {"TriSet", make<nrTriSet>, NO_CONVERSION},
    {"QuadSet", make<nrQuadSet>, NO_CONVERSION},
    {"PolySet", make<nrPolySet>, NO_CONVERSION},
    {"TriStripSet", make<nrTriStripSet>, NO_CONVERSION},
    {"IndexedLineSet", make<nrIndexedLineSet>, NO_CONVERSION},
    {"IndexSet", make<nrIndexSet>, NO_CONVERSION},
    {"SphereSensor", make<nrSphereSensor>, NO_CONVERSION},
    {"PlaneSensor", make<nrPlaneSensor>, NO_CONVERSION},
    {"Appearance", make<nrAppearance>, APPEARANCE_CONVERSION},
    {"AudioClip", make<nrAudioClip>, AUDIO_CLIP_CONVERSION},
    {"Billboard", make<nrBillboard>, NO_CONVERSION},
    {"Box", make<nrBox>, NO_CONVERSION},
    {"Collision", make<nrCollision>, NO_CONVERSION},
    {"Color", make<nrColorSet3f>, NO_CONVERSION},
    {"ColorInterpolator", make<nrColorInterpolator>, NO_CONVERSION},
    {"Cone", make<nrCone>, NO_CONVERSION},
    {"Coordinate", make<nrCoordSet3f>, NO_CONVERSION},
    {"CoordinateInterpolator", make<nrCoordinateInterpolator>, NO_CONVERSION},
    {"Cylinder", make<nrCylinder>, NO_CONVERSION},
    {"DirectionalLight", make<nrDirectionalLight>, NO_CONVERSION},
    {"Environment", make<nrEnvironment>, NO_CONVERSION},
    {"Group", make<nrGroup>, NO_CONVERSION},
    {"ImageTexture", make<nrImageTexture>, NO_CONVERSION},
    {"IndexedFaceSet", make<nrIndexedFaceSet>, FACE_SET_CONVERSION},
    {"Material", make<nrMaterial>, NO_CONVERSION},
    {"Normal", make<nrNormalSet3f>, NO_CONVERSION},
    {"NormalInterpolator", make<nrNormalInterpolator>, NO_CONVERSION},
    {"OrientationInterpolator", make<nrOrientationInterpolator>, NO_CONVERSION},
    {"PointLight", make<nrPointLight>, NO_CONVERSION},
    {"PositionInterpolator", make<nrPositionInterpolator>, NO_CONVERSION},
    {"ScalarInterpolator", make<nrScalarInterpolator>, NO_CONVERSION},
    {"Shape", make<nrShape>, SHAPE_CONVERSION},
    {"Sound", make<nrSound>, NO_CONVERSION},
    {"Sphere", make<nrSphere>, NO_CONVERSION},
    {"Switch", make<nrSwitch>, NO_CONVERSION},
    {"TextureCoordinate", make<nrTexCoordSet2f>, NO_CONVERSION},
    {"TimeSensor", make<nrTimeSensor>, NO_CONVERSION},
    {"TouchSensor", make<nrTouchSensor>, NO_CONVERSION},
    {"Transform", make<nrTransform>, NO_CONVERSION},
    {"Inline", make<nrInline>, INLINE_CONVERSION},
    // The library's own names of the attribute sets, as its text output
    // writes them outside the face and line sets, so that output reads back.
    {"CoordSet3f", make<nrCoordSet3f>, NO_CONVERSION},
    {"NormalSet3f", make<nrNormalSet3f>, NO_CONVERSION},
    {"ColorSet3f", make<nrColorSet3f>, NO_CONVERSION},
    {"TexCoordSet2f", make<nrTexCoordSet2f>, NO_CONVERSION},
};

const char* const refusedClasses[] = {
    "Background", "BoxProximitySensor", "ClickSensor", "CylinderSensor", "DirectedSound", "DiskSensor",
    "ElevationGrid", "Fog", "FontStyle", "GeneralCylinder", "LOD", "NavigationInfo", "PointSet", "PointSound",
    "Script", "SpotLight", "Text", "Texture2Transform", "Viewpoint", "WorldInfo", "WWWAnchor"};

// Nodes nested deeper than this are skipped: reading recurses once per level.
constexpr int MAX_NESTING = 200;

// What every read shares, made once and kept for the life of the process
// (allocated, never freed, so that it stays reachable).
struct Shared {
  // Given to every shape read without an appearance.
  nrAppearance* defaultAppearance;
  // Textures that appearances kept, in order of first use, each referenced;
  // appearances naming the same file share the first.
  nrPtrArray textureCache;
  // The class table by interned name.
  nrDict classes{251};
  // The first element of the most recently read string list (an Inline's url).
  nrString lastString;
  // The caller's array, handed to the reads of inlined files.
  nrPtrArray* list = nullptr;
  // The files being read, outermost first, so that a file that inlines
  // itself (directly or not) is not read again.
  nrPtrArray openFiles;
  // Per type, the index of each field name that files used with it.
  nrDict fieldIndices{127};

  nrDict* fieldsOf(nrType* type) {
    unsigned long key = reinterpret_cast<unsigned long>(type);
    void* known;
    if (!fieldIndices.find(key, known)) {
      known = new nrDict(61);
      fieldIndices.enter(key, known);
    }
    return static_cast<nrDict*>(known);
  }

  Shared() {
    defaultAppearance = new nrAppearance;
    defaultAppearance->ref();
    defaultAppearance->setLightEnable(0);
    defaultAppearance->setTexEnable(0);
    for (const ClassEntry& entry : classTable)
      classes.enter(reinterpret_cast<unsigned long>(nrName(entry.name).getEntry()), const_cast<ClassEntry*>(&entry));
  }
};

Shared* shared = nullptr;

bool equal(const nrName& name, const char* text) { return !strcmp(name.getString(), text); }
bool isEmpty(const nrName& name) { return !name.getString()[0]; }

// Grows a value array geometrically to hold index i; false when it cannot
// (a view of a shared block keeps its size).
template <typename A>
bool makeRoom(A& array, unsigned i) {
  if (i < array.getSize()) return true;
  unsigned size = array.getSize();
  array.setSize(size < 16 ? 32 : size * 2);
  return i < array.getSize();
}

// Reads the next non-blank character, which should be expected; another one
// is left unread.
unsigned char expect(vlInput& in, char expected) {
  char c;
  if (!in.read(c)) {
    vlReadError::post(&in, "Expected '%c'; got EOF", expected);
    return 0;
  }
  if (c != expected) {
    vlReadError::post(&in, "Expected '%c'; got '%c'", expected, c);
    in.putBack(c);
    return 0;
  }
  return 1;
}

// True when the next token can start a node (a class name, DEF, USE or
// NULL); nothing is read.
bool startsNode(vlInput& in) {
  char c;
  return in.peek(c) && vlInput::isIdentStartChar(c);
}

// One value of each kind, as the file writes it.
unsigned char readValue(vlInput& in, nrString& v) { return in.read(v); }
unsigned char readValue(vlInput& in, unsigned char& v) { return in.readBool(v); }
unsigned char readValue(vlInput& in, int& v) { return in.read(v); }
unsigned char readValue(vlInput& in, float& v) { return in.read(v); }
unsigned char readValue(vlInput& in, nrTime& v) {
  double seconds;
  if (!in.read(seconds)) return 0;
  v = nrTime(seconds);
  return 1;
}
unsigned char readValue(vlInput& in, nrVec2f& v) { return in.read(v[0]) && in.read(v[1]); }
unsigned char readValue(vlInput& in, nrVec3f& v) { return in.read(v[0]) && in.read(v[1]) && in.read(v[2]); }
unsigned char readValue(vlInput& in, nrVec4f& v) {
  return in.read(v[0]) && in.read(v[1]) && in.read(v[2]) && in.read(v[3]);
}
unsigned char readValue(vlInput& in, nrRotation& v) {
  nrVec3f axis;
  float angle;
  if (!readValue(in, axis) || !in.read(angle)) return 0;
  // A zero axis stays as written (its rotation is the identity).
  axis.normalize();
  v.set(axis[0], axis[1], axis[2], angle);
  return 1;
}
// Masks (an appearance's inherit mask) as the library writes them: a
// hexadecimal number.
unsigned char readValue(vlInput& in, nrBitMask& v) {
  unsigned long bits;
  if (!in.read(bits)) return 0;
  v = nrBitMask::fromBits(bits);
  return 1;
}

template <typename Field>
unsigned char readSFValue(vlInput& in, Field* field) {
  typename Field::Value value;
  if (!readValue(in, value)) return 0;
  field->set(value);
  return 1;
}
// Besides numbers, the names of the field's values (as the library writes
// them), and TRUE or FALSE: the file format's flags that the library keeps
// as two-valued enumerations, such as repeatS.
unsigned char readSFValue(vlInput& in, nrSFEnum* field) {
  int v;
  if (!in.read(v)) {
    nrName word;
    if (!in.read(word, 1) || isEmpty(word)) return 0;
    if (!field->getFieldInfo()->findEnumValue(word.getString(), v)) {
      // The library writes a value that has no name as nothing at all, so
      // the next field's name follows: the field keeps its value.
      if (field->getContainer()->getField(word.getString())) {
        in.putBack(word.getString());
        return 1;
      }
      if (!equal(word, "TRUE") && !equal(word, "FALSE")) return 0;
      v = equal(word, "TRUE");
    }
  }
  field->set(v);
  return 1;
}
// Bounds are computed, not read: their values are read and dropped.
unsigned char skipReals(vlInput& in, int n) {
  float v;
  while (n-- > 0)
    if (!in.read(v)) return 0;
  return 1;
}
unsigned char readSFValue(vlInput& in, nrSFSphereBound*) { return skipReals(in, 4); }
unsigned char readSFValue(vlInput& in, nrSFBoxBound*) { return skipReals(in, 6); }

// read(static_cast<Kind*>(field)) for the first of the Kinds that is the
// field's kind; -1 when none is.
template <typename... Kinds, typename Read>
int readAsOneOf(nrField* field, Read read) {
  nrType* type = field->getType();
  int result = -1;
  ((result < 0 && type == Kinds::getClassType() ? void(result = read(static_cast<Kinds*>(field))) : void()), ...);
  return result;
}

// The loop shared by value and node lists: "[ ]" with elements separated by
// white space and at most one comma each, or a single element without
// brackets. element(index) reads one element and says whether it took the
// index; it returns -1 when it could not read anything. Inside brackets,
// run(index) may first take a run of elements the fast way, returning how
// many it took.
template <typename Element, typename Run>
unsigned char readList(vlInput& in, Element element, Run run) {
  char c;
  if (!in.peek(c)) return 0;
  if (c != '[') return element(0) >= 0;
  in.get(c);
  unsigned index = 0;
  if (!in.peek(c)) return 0;
  while (c != ']') {
    if (unsigned taken = run(index)) {
      index += taken;
      if (!in.peek(c)) return 0;
      continue;
    }
    int took = element(index);
    if (took < 0) return 0;
    index += took;
    if (!in.peek(c)) return 0;
    if (c == ',') {
      in.get(c);
      if (!in.peek(c)) return 0;
    }
  }
  in.get(c);
  return 1;
}

template <typename Element>
unsigned char readList(vlInput& in, Element element) {
  return readList(in, element, [](unsigned) { return 0u; });
}

// Stores a run of numbers read the fast way into array from index on, within
// the room the array has (made first when it has none); returns the elements
// stored. Elements of other types, and views of a shared block (strided,
// and never resized), take no run.
template <typename A>
unsigned readNumberRun(vlInput& in, A& array, unsigned index) {
  using E = typename A::ElementType;
  constexpr bool ints = std::is_same_v<E, int>;
  constexpr unsigned group = std::is_same_v<E, float>     ? 1
                             : std::is_same_v<E, nrVec2f> ? 2
                             : std::is_same_v<E, nrVec3f> ? 3
                             : std::is_same_v<E, nrVec4f> ? 4
                                                          : 0;
  static_assert(group == 0 || sizeof(E) == group * sizeof(float), "vectors are packed floats");
  if constexpr (ints || group > 0) {
    if (array.getData() || !makeRoom(array, index)) return 0;
    unsigned room = array.getSize() - index;
    E* out = array.getArray() + index;
    if constexpr (ints)
      return in.readIntRun(out, room);
    else
      return in.readFloatRun(reinterpret_cast<float*>(out), room * group, group) / group;
  } else {
    return 0;
  }
}

}  // namespace

// The input of one file and the objects made while reading it: each is
// referenced until the file is done, so that DEF names stay valid and what
// no node kept (a failed node, a top-level non-node) is released at the end.
struct vlDB::FileState {
  vlInput in;
  nrPtrArray made;
  nrRefArray pendingNodes;
  int depth = 0;

  ~FileState() {
    for (unsigned i = 0; i < made.getCount(); ++i) static_cast<nrContainer*>(made[i])->unref();
  }
};

void vlDB::init() {
  nrObject::initClasses();
  if (!shared) shared = new Shared;
}

// ---- files ----

unsigned char vlDB::readFile(const char* fileName, nrContainer*& root, nrPtrArray& list) {
  init();
  root = nullptr;
  nrString path;
  if (!nrGlobal::findFile(fileName, path, nrGlobal::READ_TEXT_FMODE)) return 0;
  struct stat status;
  FILE* stream = nullptr;
  if (stat(path.getString(), &status) == 0 && !S_ISDIR(status.st_mode)) stream = nrFileStream::open(path.getString());
  if (!stream) {
    // The message text stands where the function name goes and the file name
    // where the message goes: long-standing wording.
    vlDebugError::post("Can't open file: %s\n", "%s", fileName);
    return 0;
  }
  char* canonical = realpath(path.getString(), nullptr);
  for (unsigned i = 0; canonical && i < shared->openFiles.getCount(); ++i) {
    const char* open = static_cast<char*>(shared->openFiles[i]);
    if (open && !strcmp(open, canonical)) {
      vlDebugError::post("vlDB::readFile", "%s is inlined within itself", fileName);
      free(canonical);
      fclose(stream);
      return 0;
    }
  }
  shared->openFiles.append(canonical);

  // Files named by the scene (textures, inlines) are looked for next to it
  // as well, as users expect: its directory joins the search path while the
  // file is read.
  const char* previous = nrGlobal::getFilePath();
  bool hadPath = previous != nullptr;
  std::string savedPath = hadPath ? previous : "";
  const char* slash = strrchr(path.getString(), '/');
  if (slash) {
    std::string directory(path.getString(), slash == path.getString() ? 1 : size_t(slash - path.getString()));
    nrGlobal::setFilePath(hadPath ? (directory + ":" + savedPath).c_str() : directory.c_str());
  }
  unsigned char ok = readStream(stream, root, list);
  // What was read before the error stays read.
  if (ferror(stream)) {
    vlDebugError::post("vlDB::readFile", "%s could not be read to its end", fileName);
    ok = 0;
  }
  if (slash) nrGlobal::setFilePath(hadPath ? savedPath.c_str() : nullptr);

  shared->openFiles.setCount(shared->openFiles.getCount() - 1);
  free(canonical);
  fclose(stream);
  return ok;
}

unsigned char vlDB::readStream(FILE* stream, nrContainer*& root, nrPtrArray& list) {
  init();
  nrPtrArray* outerList = shared->list;
  if (!outerList) {
    // Before a new outermost read, the cache lets go of the textures that
    // only it still holds.
    nrPtrArray& cache = shared->textureCache;
    unsigned kept = 0;
    for (unsigned i = 0; i < cache.getCount(); ++i) {
      nrTexture* texture = static_cast<nrTexture*>(cache[i]);
      if (texture->getRefCount() == 1)
        texture->unref();
      else
        cache[kept++] = texture;
    }
    cache.setCount(kept);
  }
  shared->list = &list;
  unsigned char ok;
  {
    FileState file;
    file.in.setFilePointer(stream);
    ok = read(file, root);
    freeFields(file, root);
  }
  shared->list = outerList;
  return ok && root;
}

// Frees the unconnected fields of the root and of every group's children,
// each container once however often it is shared.
void vlDB::freeFields(FileState& file, nrContainer* root) {
  nrDict visited(file.made.getCount() * 2 + 1);
  nrPtrArray pending;
  pending.append(root);
  while (pending.getCount()) {
    nrContainer* c = static_cast<nrContainer*>(pending[pending.getCount() - 1]);
    pending.setCount(pending.getCount() - 1);
    if (!visited.enter(reinterpret_cast<unsigned long>(c), c)) continue;
    c->freeUnconnectedFields();
    if (!c->isOfType(nrGroup::getClassType())) continue;
    nrGroup* group = static_cast<nrGroup*>(c);
    for (int i = group->getNumChildren() - 1; i >= 0; --i) {
      nrNode* child = group->getChild(i);
      if (child && makeRoom(pending, pending.getCount())) pending.append(child);
    }
  }
}

// ---- statements and nodes ----

unsigned char vlDB::read(FileState& file, nrContainer*& root) {
  vlInput& in = file.in;
  nrGroup* group = new nrGroup;
  root = group;
  unsigned char result = 1;
  nrString token;
  char c;
  while (in.peek(c)) {
    if (!vlInput::isIdentStartChar(c)) {
      in.read(token);
      vlReadError::post(&in, "Expected a node or ROUTE; got \"%s\"", token.getString());
      result = 0;
      continue;
    }
    in.read(token);
    const char* word = token.getString();
    if (!strcmp(word, "PROTO")) {
      vlReadError::post(&in, "This version of the parser does not parse PROTOs yet");
      result = 0;
    } else if (!strcmp(word, "EXTERNPROTO")) {
      vlReadError::post(&in, "This version of the parser does not parse EXTERNPROTOs yet");
      result = 0;
    } else if (!strcmp(word, "ROUTE")) {
      result = readRoute(file);
    } else {
      in.putBack(word);
      nrContainer* object = nullptr;
      result = readObject(file, object);
      if (object && object->isOfType(nrNode::getClassType())) group->addChild(static_cast<nrNode*>(object));
    }
  }
  return in.isHeaderOk() ? result : 0;
}

unsigned char vlDB::readObject(FileState& file, nrContainer*& object) {
  vlInput& in = file.in;
  object = nullptr;
  nrName word;
  if (!in.read(word, 1)) return in.isHeaderOk();
  if (isEmpty(word) || equal(word, "NULL")) return 1;
  if (equal(word, "USE")) {
    nrName name;
    if (!in.read(name, 1)) {
      vlReadError::post(&in, "Premature end of file after USE");
      return 0;
    }
    object = in.findReference(name);
    if (!object) {
      vlReadError::post(&in, "Unknown reference \"%s\"", name.getString());
      return 0;
    }
    return 1;
  }
  if (equal(word, "DEF")) {
    nrName name, className;
    if (!in.read(name, 1) || !in.read(className, 1)) {
      vlReadError::post(&in, "Premature end of file after DEF");
      return 0;
    }
    if (isEmpty(name)) {
      vlReadError::post(&in, "No name given after");
      return 0;
    }
    if (isEmpty(className)) {
      vlReadError::post(&in, "Invalid definition of %s", name.getString());
      return 0;
    }
    return readNode(file, name, className, object);
  }
  return readNode(file, nrName(), word, object);
}

unsigned char vlDB::readNode(FileState& file, const nrName& defName, const nrName& className, nrContainer*& object) {
  vlInput& in = file.in;
  object = nullptr;
  if (!expect(in, '{')) return 0;
  if (file.depth >= MAX_NESTING) {
    vlReadError::post(&in, "Nodes nested deeper than %d levels", MAX_NESTING);
    flushInput(file);
    return 0;
  }
  ++file.depth;
  nrContainer* made = nullptr;
  unsigned char ok = readNodeInstance(file, className, made);
  --file.depth;
  if (!ok) {
    flushInput(file);
    return 0;
  }
  if (!isEmpty(defName)) in.addReference(defName, made);
  if (!expect(in, '}')) {
    flushInput(file);
    return 0;
  }
  object = made;
  return 1;
}

unsigned char vlDB::readNodeInstance(FileState& file, const nrName& className, nrContainer*& object) {
  int conversion;
  object = createInstanceFromName(className, conversion);
  if (!object) {
    const char* format = "Unknown class \"%s\"";
    for (const char* refused : refusedClasses)
      if (equal(className, refused)) format = "Unsupported class \"%s\"";
    vlReadError::post(&file.in, format, className.getString());
    return 0;
  }
  object->ref();
  makeRoom(file.made, file.made.getCount());
  file.made.append(object);
  if (!readFields(file, object)) return 0;
  convert(object, conversion);
  return 1;
}

nrContainer* vlDB::createInstanceFromName(const nrName& className, int& conversion) {
  void* value;
  if (!shared->classes.find(reinterpret_cast<unsigned long>(className.getEntry()), value)) return nullptr;
  const ClassEntry* entry = static_cast<const ClassEntry*>(value);
  conversion = entry->conversion;
  return entry->make();
}

void vlDB::convert(nrContainer* object, int conversion) {
  switch (conversion) {
    case SHAPE_CONVERSION: {
      nrShape* shape = static_cast<nrShape*>(object);
      if (!shape->getAppearance()) shape->setAppearance(shared->defaultAppearance);
      break;
    }
    case AUDIO_CLIP_CONVERSION: {
      nrAudioClip* clip = static_cast<nrAudioClip*>(object);
      nrAudioSamples* samples = new nrAudioSamples;
      samples->setFileName(clip->getUrl().getCount() ? clip->getUrl()[0].getString() : nullptr);
      samples->load();
      clip->setSamples(samples);
      break;
    }
    case INLINE_CONVERSION: {
      nrInline* node = static_cast<nrInline*>(object);
      // The name is the first element of the string list read last: the
      // node's own url, or whatever list came before when it has none.
      nrString name = shared->lastString;
      const char* text = name.isNull() ? "" : name.getString();
      vlDebugError::post("vlDB::readNodeInstance", "Reading Inline %s", text);
      nrContainer* inlined = nullptr;
      readFile(text, inlined, *shared->list);
      if (inlined) {
        node->addChild(static_cast<nrNode*>(inlined));
        node->setWhichChild(0);
      }
      break;
    }
    case FACE_SET_CONVERSION: {
      nrIndexedFaceSet* set = static_cast<nrIndexedFaceSet*>(object);
      if (!set->getNormalSet()) vlGeom::computeNorms(set, set->getCreaseAngle());
      if (set->getTexCoordSet()) set->setTexCoordBind(nrGeoSet::PER_VERTEX_TEX_COORD);
      if (!set->getColorSet()) set->setColorBind(nrGeoSet::NO_COLOR);
      vlGeom::calcStaticBound(set);
      break;
    }
    case APPEARANCE_CONVERSION: {
      nrAppearance* app = static_cast<nrAppearance*>(object);
      nrTexture* texture = app->getTexture();
      if (texture) {
        nrString name;
        texture->getFileName(name);
        const char* text = name.isNull() ? "" : name.getString();
        bool cached = false;
        for (unsigned i = 0; i < shared->textureCache.getCount() && !cached; ++i) {
          nrTexture* candidate = static_cast<nrTexture*>(shared->textureCache[i]);
          nrString other;
          candidate->getFileName(other);
          if (!strcmp(text, other.isNull() ? "" : other.getString())) {
            if (candidate != texture) app->setTexture(candidate);
            texture = candidate;
            cached = true;
          }
        }
        if (!cached) {
          texture->ref();
          shared->textureCache.append(texture);
        }
        app->setTexEnv(texture->getComponentCount() < 3 ? nrContext::MODULATE_TENV : nrContext::REPLACE_TENV);
      }
      app->setTexEnable(texture != nullptr);
      app->setLightEnable(app->getMaterial() != nullptr);
      break;
    }
  }
}

// ---- fields ----

unsigned char vlDB::readFields(FileState& file, nrContainer* container) {
  vlInput& in = file.in;
  nrName name;
  for (;;) {
    if (!in.read(name, 1) || isEmpty(name)) return 1;
    if (equal(name, "ROUTE")) {
      readRoute(file);
      continue;
    }
    int ok = readvlField(file, container, name);
    if (ok < 0) vlReadError::post(&in, "Unknown field %s\n", name.getString());
    if (ok <= 0) return 0;
  }
}

int vlDB::readvlField(FileState& file, nrContainer* container, const nrName& fieldName) {
  // Names found before are looked up by identity instead of by text.
  nrDict* known = shared->fieldsOf(container->getType());
  unsigned long key = reinterpret_cast<unsigned long>(fieldName.getEntry());
  void* index;
  nrField* field;
  if (known->find(key, index))
    field = container->getField(int(reinterpret_cast<intptr_t>(index)));
  else if ((field = container->getField(fieldName.getString())))
    known->enter(key, reinterpret_cast<void*>(intptr_t(field->getIndex())));
  if (!field) {
    vlReadError::post(&file.in, "Could not get nerio field %s\n", fieldName.getString());
    return -1;
  }
  return readNerioField(file, field);
}

unsigned char vlDB::readNerioField(FileState& file, nrField* field) {
  vlInput& in = file.in;
  if (field->isOfType(nrMField::getClassType())) return readMFField(file, static_cast<nrMField*>(field));
  int ok = readAsOneOf<nrSFString, nrSFUByte, nrSFInt, nrSFEnum, nrSFFloat, nrSFTime, nrSFVec4f, nrSFVec3f, nrSFVec2f,
                       nrSFRotation, nrSFRef, nrSFBitMask, nrSFSphereBound, nrSFBoxBound>(field, [&](auto* f) -> int {
    if constexpr (std::is_same_v<decltype(f), nrSFRef*>) {
      // Text that cannot start a node reads as no node, and the node's
      // closing brace check reports it. A node that failed has been read to
      // its end: the field keeps its value and the fields after it are read.
      nrContainer* node = nullptr;
      if (!startsNode(in) || readSFNode(file, node)) f->set(node);
      return 1;
    } else {
      return readSFValue(in, f);
    }
  });
  // A single value that cannot be read fails without a message of its own.
  if (ok < 0) {
    vlDebugError::post("vlDB::readNerioField()", "Unknown field %s", field->getName());
    return 0;
  }
  return ok;
}

// NULL, which readObject turns into no object, or a node with DEF and USE.
unsigned char vlDB::readSFNode(FileState& file, nrContainer*& object) { return readObject(file, object); }

unsigned char vlDB::readMFField(FileState& file, nrMField* field) {
  int ok = field->getType() == nrMFRef::getClassType()
               ? readMFNodes(file, field)
               : readAsOneOf<nrMFString, nrMFInt, nrMFFloat, nrMFVec3f, nrMFVec2f, nrMFRotation>(
                     field, [&](auto* f) { return readMFValues(file, f); });
  if (ok < 0) {
    vlDebugError::post("vlDB::readNerioField()", "Unknown field %s", field->getName());
    return 0;
  }
  if (!ok) vlReadError::post(&file.in, "Couldn't read value for field \"%s\"", field->getName());
  return ok;
}

template <typename Field>
unsigned char vlDB::readMFValues(FileState& file, Field* field) {
  typename Field::Array& array = *field->getStorage();
  unsigned count = array.getCount(), end = 0;
  unsigned char ok = readList(
      file.in, [&](unsigned index) { return readMFElt(file, array, index, end); },
      [&](unsigned index) {
        unsigned taken = readNumberRun(file.in, array, index);
        if (taken) end = index + taken;
        return taken;
      });
  if (end) {
    if (end > count) array.setCount(end);
    // The doubling that made room leaves up to half a large array unused:
    // it goes back.
    size_t bytes = size_t(array.getSize()) * array.getElementSize();
    if (!array.getData() && array.getSize() > array.getCount() && bytes >= nrBlockAllocator::LARGE_LIMIT)
      array.setSize(array.getCount());
    field->valuesChanged();
  }
  return ok;
}

template <typename A>
int vlDB::readMFElt(FileState& file, A& array, unsigned index, unsigned& end) {
  typename A::ElementType value;
  if (!readValue(file.in, value) || !makeRoom(array, index)) return -1;
  if constexpr (std::is_same_v<A, nrStringArray>)
    if (index == 0) shared->lastString = value;
  array[index] = value;
  end = index + 1;
  return 1;
}

// Nodes are stored by index in runs, each run with one change of the field;
// the runs of nested lists wait on one stack in the file state.
// A NULL element, or a node of a refused type, is not stored but uses up its
// index: within the field's current count the old value stays, past it the
// slot is left null when a later element is stored.
unsigned char vlDB::readMFNodes(FileState& file, nrMField* field) {
  nrMFRef* list = static_cast<nrMFRef*>(field);
  nrRefInfo* info = static_cast<nrRefInfo*>(field->getFieldInfo());
  nrContainer* owner = field->getContainer();
  nrRefArray& pending = file.pendingNodes;
  const unsigned base = pending.getCount();
  unsigned runStart = 0;
  auto flush = [&] {
    if (unsigned n = pending.getCount() - base) list->setRange(runStart, n, pending.getArray() + base);
    pending.setCount(base);
  };
  unsigned char ok = readList(file.in, [&](unsigned index) {
    if (!startsNode(file.in)) return -1;
    nrContainer* node;
    if (!readSFNode(file, node)) return 0;
    if (!node || !info->checkType("nrMFRef::set(int, nrContainer*)", node, owner)) {
      flush();
      return 1;
    }
    if (pending.getCount() == base) runStart = index;
    if (makeRoom(pending, pending.getCount())) pending.append(node);
    return 1;
  });
  flush();
  return ok;
}

// ---- routes ----

unsigned char vlDB::readRoute(FileState& file) {
  vlInput& in = file.in;
  unsigned char ok = 1;
  nrField* ends[2] = {nullptr, nullptr};
  static const char* const missingNode[] = {"No node named %s to route from", "No node named %s to route to"};
  static const char* const missingFieldName[] = {"Expected route source, got EOF", "Expected route destination, got EOF"};
  static const char* const missingField[] = {"No field named %s to route from", "No field named %s to route to"};
  for (int end = 0; end < 2; ++end) {
    nrName word;
    if (end == 1) {
      if (!in.read(word, 1)) {
        vlReadError::post(&in, "Expected %s, got %s", "TO", "EOF");
        return 0;
      }
      if (!equal(word, "TO")) {
        vlReadError::post(&in, "Expected %s, got %s", "TO", word.getString());
        ok = 0;
      }
    }
    nrName nodeName, fieldName;
    if (!in.read(nodeName, 1)) {
      vlReadError::post(&in, "Expected node name, got EOF");
      return 0;
    }
    nrContainer* node = in.findReference(nodeName);
    if (!node) {
      vlReadError::post(&in, missingNode[end], nodeName.getString());
      ok = 0;
    }
    char c;
    if (!in.read(c)) {
      vlReadError::post(&in, "Expected %c, got EOF", '.');
      return 0;
    }
    if (c != '.') {
      vlReadError::post(&in, "Expected %c, got %c", '.', c);
      in.putBack(c);
      ok = 0;
    }
    if (!in.read(fieldName, 1)) {
      vlReadError::post(&in, "%s", missingFieldName[end]);
      return 0;
    }
    if (node && !(ends[end] = node->getField(fieldName.getString()))) {
      vlReadError::post(&in, missingField[end], fieldName.getString());
      ok = 0;
    }
    // Nodes passed along a route could make a node its own descendant.
    nrType* kind = ends[end] ? ends[end]->getType() : nullptr;
    if (end == 0 && (kind == nrSFRef::getClassType() || kind == nrMFRef::getClassType())) {
      vlReadError::post(&in, "Cannot route node field %s", fieldName.getString());
      ends[0] = nullptr;
      ok = 0;
    }
  }
  if (ends[0] && ends[1]) ends[0]->connect(ends[1]);
  return ok;
}

// Skips the rest of a node whose opening brace has been read: to the brace
// that closes it, or the end of the input. Braces inside quoted strings and
// comments do not count.
void vlDB::flushInput(FileState& file) {
  vlInput& in = file.in;
  int depth = 1;
  char c;
  nrString skipped;
  while (depth > 0 && in.read(c)) {
    if (c == '{') {
      ++depth;
    } else if (c == '}') {
      --depth;
    } else if (c == '"') {
      in.putBack(c);
      in.read(skipped);
    }
  }
}
