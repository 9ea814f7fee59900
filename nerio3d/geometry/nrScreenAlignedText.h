// A line of text drawn as bitmap characters at a 3D position: it always faces
// the screen and keeps its pixel size at any distance. Texts of one face and
// size drawn on one drawable share one set of character display lists.
#pragma once

#include "nerio3d/core/nrString.h"
#include "nerio3d/geometry/nrGeometry.h"
#include "nerio3d/math/nrVec4f.h"

class nrDrawable;
class nrFont;
class nrIntArray;
class nrPtrArray;

class nrScreenAlignedText : public nrGeometry {
  NR_DECLARE_CONTAINER_TYPE(nrScreenAlignedText)

  enum FontFaceEnum {
    TIMES,
    TIMES_ITALIC,
    TIMES_BOLD,
    TIMES_BOLD_ITALIC,
    HELVETICA,
    HELVETICA_OBLIQUE,
    HELVETICA_BOLD,
    HELVETICA_BOLD_OBLIQUE
  };
  enum { TEXT_FIELD = 2, POSITION_FIELD, COLOR_FIELD, FONT_SIZE_FIELD, FONT_FACE_FIELD };
  // One display list per character code 0 to 126.
  enum { CHAR_COUNT = 127 };

  nrScreenAlignedText() : nrScreenAlignedText(getClassType()) {}
  explicit nrScreenAlignedText(nrType* type);
  ~nrScreenAlignedText() override;

  void setText(const nrString& value) { setValue(text, value, TEXT_FIELD); }
  void getText(nrString& value) const { value = getFieldValue(text, TEXT_FIELD); }
  void setPosition(float x, float y, float z) { setValue(position, nrVec3f(x, y, z), POSITION_FIELD); }
  void getPosition(float* x, float* y, float* z) const;
  void setPosition(const nrVec3f& value) { setValue(position, value, POSITION_FIELD); }
  const nrVec3f& getPosition() const { return getFieldValue(position, POSITION_FIELD); }
  void getPosition(nrVec3f& value) const { value = getPosition(); }
  void setColor(float r, float g, float b, float a) { setValue(color, nrVec4f(r, g, b, a), COLOR_FIELD); }
  void getColor(float* r, float* g, float* b, float* a) const;
  void setColor(const nrVec4f& value) { setValue(color, value, COLOR_FIELD); }
  const nrVec4f& getColor() const { return getFieldValue(color, COLOR_FIELD); }
  void getColor(nrVec4f& value) const { value = getColor(); }
  // The height of a line in pixels.
  void setSize(int size) { setValue(fontSize, size, FONT_SIZE_FIELD); }
  int getSize() const { return getFieldValue(fontSize, FONT_SIZE_FIELD); }
  // A FontFaceEnum value.
  void setFace(int face) { setValue(fontFace, face, FONT_FACE_FIELD); }
  int getFace() const { return getFieldValue(fontFace, FONT_FACE_FIELD); }

  // Sets the colour and the raster position at the text's position, then
  // calls one character list per character; the current colour is white after.
  void draw(nrDrawAction* action) override;
  // The position, widened by 0.0001 on each side.
  void calcBound(nrBoxBound& box) override;

  // Opens the font of the text's face and size for the current context's
  // drawable; 0 (after a warning) when no such font can be found.
  int queryFont();
  // Makes the text's character lists ready on context: the lists of another
  // text of the same face and size built on the same drawable when there are
  // some, else the text's own lists compiled from its font. When the font
  // cannot be found the text is left without lists and draws no characters.
  void buildFont(nrContext* context);
  void fieldChanged(short index) override;
  // A copy made into a text in use takes lists for its copied face and size
  // at the next draw, as a change would.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrGeometry::copy;

 protected:
  nrString text;
  nrVec3f position;
  nrVec4f color;
  int fontSize;
  int fontFace;

 private:
  // The cache key of the face and size, -1 for those no font can have.
  int fontKey() const;
  // Index of the cache entry for key on drawable, -1 when there is none.
  static int findEntry(int key, nrDrawable* drawable);
  // Stops using the cache entry the text's lists come from, if any.
  void leaveEntry();

  int listBase;  // the lists drawn, 0 when there are none
  int ownBase;   // the ids this text owns
  int version;
  int entryKey;         // key of the cache entry in use, -1 when none
  nrDrawable* builtOn;  // drawable of that entry
  nrFont* font;

  // Class-wide cache of built character lists, one entry per key
  // (fontFace + fontSize * 8) and drawable, with the number of texts using it.
  static nrIntArray* cacheBases;
  static nrIntArray* cacheKeys;
  static nrIntArray* cacheUsers;
  static nrPtrArray* cacheDrawables;
  static int lastVersion;
};
