#include "nerio3d/geometry/nrScreenAlignedText.h"

#include <climits>
#include <cstring>
#include <string>

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/platform/nrFont.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"

nrIntArray* nrScreenAlignedText::cacheBases = nullptr;
nrIntArray* nrScreenAlignedText::cacheKeys = nullptr;
nrIntArray* nrScreenAlignedText::cacheUsers = nullptr;
nrPtrArray* nrScreenAlignedText::cacheDrawables = nullptr;
int nrScreenAlignedText::lastVersion = 1;

namespace {

const char* faceNames[] = {"TIMES",     "TIMES_ITALIC",      "TIMES_BOLD",     "TIMES_BOLD_ITALIC",
                           "HELVETICA", "HELVETICA_OBLIQUE", "HELVETICA_BOLD", "HELVETICA_BOLD_OBLIQUE"};
const int faceCount = 8;

// The font each face asks for: the Times faces a serif family, the Helvetica
// faces a sans-serif one.
struct FaceRequest {
  const char* family;
  int weight;
  bool italic;
};
const FaceRequest faceRequests[faceCount] = {
    {"serif", 400, false},      {"serif", 400, true},      {"serif", 700, false},      {"serif", 700, true},
    {"sans-serif", 400, false}, {"sans-serif", 400, true}, {"sans-serif", 700, false}, {"sans-serif", 700, true}};

}  // namespace

NR_DEFINE_TYPE(nrScreenAlignedText, nrGeometry, "ScreenAlignedText") {
  nrSFString::addTypeField(type, "text", TEXT_FIELD, nrString(), &nrScreenAlignedText::text);
  nrSFVec3f::addTypeField(type, "position", POSITION_FIELD, nrVec3f(0, 0, 0), &nrScreenAlignedText::position);
  nrSFVec4f::addTypeField(type, "color", COLOR_FIELD, nrVec4f(1, 1, 1, 1), &nrScreenAlignedText::color);
  nrSFInt::addTypeField(type, "fontSize", FONT_SIZE_FIELD, 12, &nrScreenAlignedText::fontSize);
  nrSFEnum::addTypeField(type, "fontFace", FONT_FACE_FIELD, HELVETICA, &nrScreenAlignedText::fontFace);
  const int values[faceCount] = {TIMES,     TIMES_ITALIC,      TIMES_BOLD,     TIMES_BOLD_ITALIC,
                                 HELVETICA, HELVETICA_OBLIQUE, HELVETICA_BOLD, HELVETICA_BOLD_OBLIQUE};
  type->defineEnums(FONT_FACE_FIELD, faceCount, faceNames, values);
  cacheBases = new nrIntArray(8);
  cacheKeys = new nrIntArray(8);
  cacheUsers = new nrIntArray(8);
  cacheDrawables = new nrPtrArray(8);
}

nrScreenAlignedText::nrScreenAlignedText(nrType* type)
    : nrGeometry(type),
      listBase(nrContext::newId(CHAR_COUNT)),
      ownBase(listBase),
      version(1),
      entryKey(-1),
      builtOn(nullptr),
      font(nullptr) {
  initFieldDefaults(classType);
  boundChanged();
}

// The reserved ids go back to the shared id space, and the lists with them
// when this text was the last one drawing them.
nrScreenAlignedText::~nrScreenAlignedText() {
  leaveEntry();
  if (ownBase >= 1) nrContext::freeId(ownBase, CHAR_COUNT);
  delete font;
  destroyFieldContents(classType);
}

void nrScreenAlignedText::getPosition(float* x, float* y, float* z) const {
  const nrVec3f& p = getFieldValue(position, POSITION_FIELD);
  *x = p[0];
  *y = p[1];
  *z = p[2];
}

void nrScreenAlignedText::getColor(float* r, float* g, float* b, float* a) const {
  const nrVec4f& c = getFieldValue(color, COLOR_FIELD);
  *r = c[0];
  *g = c[1];
  *b = c[2];
  *a = c[3];
}

void nrScreenAlignedText::fieldChanged(short index) {
  if (index >= TEXT_FIELD) boundChanged();
  // Texts sharing lists check them against one id, so versions come from one
  // class-wide count: a changed text is always newer than any other's version.
  version = ++lastVersion;
  nrGeometry::fieldChanged(index);
}

void nrScreenAlignedText::copy(nrContainer* from, nrCloneTable* table) {
  nrGeometry::copy(from, table);
  if (from && from != this) version = ++lastVersion;
}

void nrScreenAlignedText::calcBound(nrBoxBound& box) { boxAround(box, position, nrVec3f(0.0001f, 0.0001f, 0.0001f)); }

void nrScreenAlignedText::draw(nrDrawAction* action) {
  cleanPendingFields();
  nrContext* context = contextOf(action);
  if (!context) return;
  unsigned char recording = context->getRecordEnable();
  context->setRecordEnable(0);
  context->setMaterialModeEnable(nrContext::NO_COLOR_MATERIAL);
  context->setRecordEnable(recording);
  // Versions are kept per list id, and a text sharing its lists may have
  // drawn them with a newer version than a change of this text's font: a
  // face or size that no longer matches the lists taken is built all the same.
  bool otherFont = entryKey >= 0 && (entryKey != fontKey() || builtOn != context->getDrawable());
  if (context->isDirty(listBase, version) || otherFont) buildFont(context);

  nrgl::Color4f(color[0], color[1], color[2], color[3]);
  nrgl::RasterPos3f(position[0], position[1], position[2]);
  const char* chars = text.getString();
  if (chars && *chars && listBase >= 1) {
    // Codes from 127 up have no list in a font: they are left out rather than
    // drawn as whatever list follows the font's.
    std::string kept;
    size_t length = strlen(chars);
    for (size_t i = 0; i < length; ++i)
      if (static_cast<unsigned char>(chars[i]) < CHAR_COUNT) kept += chars[i];
    if (!kept.empty()) {
      nrFont::BitmapUnpack unpack;
      nrgl::ListBase(listBase);
      nrgl::CallLists(static_cast<GLsizei>(kept.size()), GL_UNSIGNED_BYTE, kept.data());
    }
  }
  nrgl::Color4f(1, 1, 1, 1);
}

int nrScreenAlignedText::queryFont() {
  cleanPendingFields();
  delete font;
  font = nullptr;
  if (fontFace >= 0 && fontFace < faceCount) {
    const FaceRequest& request = faceRequests[fontFace];
    font = nrFont::open(request.family, request.weight, request.italic, fontSize);
  }
  if (font) return 1;
  std::string message = "nrScreenAlignedText::queryFont() - no font for face ";
  message += fontFace >= 0 && fontFace < faceCount ? faceNames[fontFace] : std::to_string(fontFace);
  message += " at size " + std::to_string(fontSize);
  nrGlobal::notify(nrGlobal::WARN, nrGlobal::RESOURCE, message.c_str());
  return 0;
}

void nrScreenAlignedText::buildFont(nrContext* context) {
  if (!context) return;
  cleanPendingFields();
  nrDrawable* drawable = context->getDrawable();
  // Keys of faces outside the table or of sizes below one may equal a real
  // font's key, and sizes past the int range of keys have none; such texts
  // never share, their lookup just fails.
  int key = fontKey();
  bool known = key >= 0;
  bool fresh = false;
  if (known && (entryKey != key || builtOn != drawable)) {
    leaveEntry();
    int entry = findEntry(key, drawable);
    if (entry < 0) {
      if (ownBase < 1) ownBase = nrContext::newId(CHAR_COUNT);
      cacheBases->append(ownBase);
      cacheKeys->append(key);
      cacheUsers->append(0);
      cacheDrawables->append(drawable);
      entry = static_cast<int>(cacheKeys->getCount()) - 1;
      fresh = true;
    }
    ++(*cacheUsers)[entry];
    entryKey = key;
    builtOn = drawable;
    listBase = (*cacheBases)[entry];
  }
  // Shared lists are taken as they are, unless this OpenGL context lacks them
  // (a context made afresh on the same drawable).
  if (known && !fresh && nrgl::IsList(listBase)) return;
  if (!queryFont()) {
    leaveEntry();
    listBase = 0;
    // Remembered against the empty base: the lookup is not repeated until the text changes.
    context->isDirty(0, version);
    return;
  }
  font->buildBitmapLists(0, CHAR_COUNT, listBase);
  // The lists are all the text needs from the font.
  delete font;
  font = nullptr;
}

int nrScreenAlignedText::fontKey() const {
  bool known = fontFace >= 0 && fontFace < faceCount && fontSize >= 1 && fontSize <= (INT_MAX - faceCount) / 8;
  return known ? fontFace + fontSize * 8 : -1;
}

int nrScreenAlignedText::findEntry(int key, nrDrawable* drawable) {
  for (unsigned i = 0; i < cacheKeys->getCount(); ++i)
    if ((*cacheKeys)[i] == key && (*cacheDrawables)[i] == drawable) return static_cast<int>(i);
  return -1;
}

void nrScreenAlignedText::leaveEntry() {
  if (entryKey < 0) return;
  int entry = findEntry(entryKey, builtOn);
  entryKey = -1;
  if (entry < 0) return;
  int base = (*cacheBases)[entry];
  if (--(*cacheUsers)[entry] > 0) {
    // The lists stay with the texts still drawing them, and so do their ids.
    if (base == ownBase) ownBase = 0;
    return;
  }
  nrContext* current = nrContext::getCurrent();
  if (current && current->getDrawable() == builtOn) nrgl::DeleteLists(base, CHAR_COUNT);
  if (base != ownBase) nrContext::freeId(base, CHAR_COUNT);
  cacheBases->removeIndex(entry);
  cacheKeys->removeIndex(entry);
  cacheUsers->removeIndex(entry);
  cacheDrawables->removeIndex(entry);
}
