#include "nerio3d/platform/nrFont.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <map>
#include <string>
#include <vector>

#include "nerio3d/render/nrGL.h"

namespace {

std::map<std::string, std::string>& aliases() {
  static std::map<std::string, std::string> table;
  return table;
}

// Families fontconfig resolves through its configuration: any font it picks
// for them is the right one.
bool isGeneric(const char* family) {
  for (const char* generic : {"serif", "sans-serif", "sans", "monospace", "mono", "cursive", "fantasy"})
    if (FcStrCmpIgnoreCase(reinterpret_cast<const FcChar8*>(family), reinterpret_cast<const FcChar8*>(generic)) == 0)
      return true;
  return false;
}

bool hasFamily(FcPattern* font, const char* family) {
  FcChar8* name = nullptr;
  for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &name) == FcResultMatch; ++i)
    if (FcStrCmpIgnoreCase(name, reinterpret_cast<const FcChar8*>(family)) == 0) return true;
  return false;
}

// The file, face index, synthetic bold and slant matrix of the best match;
// false when none is acceptable.
bool match(const char* family, int weight, bool italic, int pixelHeight, std::string& file, int& index, bool& embolden,
           FcMatrix& matrix) {
  if (!FcInit()) return false;
  FcPattern* pattern = FcPatternCreate();
  FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
  FcPatternAddInteger(pattern, FC_WEIGHT, FcWeightFromOpenType(weight));
  FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddDouble(pattern, FC_PIXEL_SIZE, pixelHeight);
  FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result;
  FcPattern* font = FcFontMatch(nullptr, pattern, &result);
  FcPatternDestroy(pattern);
  bool ok = font && (isGeneric(family) || hasFamily(font, family));
  FcChar8* path = nullptr;
  if (ok) ok = FcPatternGetString(font, FC_FILE, 0, &path) == FcResultMatch;
  if (ok) {
    file = reinterpret_cast<const char*>(path);
    if (FcPatternGetInteger(font, FC_INDEX, 0, &index) != FcResultMatch) index = 0;
    FcBool bold = FcFalse;
    embolden = FcPatternGetBool(font, FC_EMBOLDEN, 0, &bold) == FcResultMatch && bold;
    FcMatrix* slant = nullptr;
    FcMatrixInit(&matrix);
    if (FcPatternGetMatrix(font, FC_MATRIX, 0, &slant) == FcResultMatch) matrix = *slant;
  }
  if (font) FcPatternDestroy(font);
  return ok;
}

FT_Fixed fixed(double v) { return static_cast<FT_Fixed>(v * 65536.0 + (v < 0 ? -0.5 : 0.5)); }

}  // namespace

void nrFont::setFamilyAlias(const char* generic, const char* family) {
  if (!generic) return;
  if (family)
    aliases()[generic] = family;
  else
    aliases().erase(generic);
}

nrFont* nrFont::open(const char* family, int weight, bool italic, int pixelHeight) {
  // FreeType renders no glyph of more than 32767 pixels a side: past that
  // height characters go missing or come out at a wrong size.
  if (!family || pixelHeight < 1 || pixelHeight > 32767) return nullptr;
  auto alias = aliases().find(family);
  if (alias != aliases().end()) family = alias->second.c_str();
  std::string file;
  int index = 0;
  bool embolden = false;
  FcMatrix matrix;
  if (!match(family, weight, italic, pixelHeight, file, index, embolden, matrix)) return nullptr;

  nrFont* font = new nrFont;
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  FT_Size_RequestRec size = {FT_SIZE_REQUEST_TYPE_CELL, 0, pixelHeight * 64, 0, 0};
  bool ok = FT_Init_FreeType(&library) == 0;
  font->library = library;
  ok = ok && FT_New_Face(library, file.c_str(), index, &face) == 0;
  font->face = face;
  ok = ok && FT_Request_Size(face, &size) == 0;
  if (!ok) {
    delete font;
    return nullptr;
  }
  FT_Matrix slant = {fixed(matrix.xx), fixed(matrix.xy), fixed(matrix.yx), fixed(matrix.yy)};
  FT_Set_Transform(face, &slant, nullptr);
  font->embolden = embolden;
  return font;
}

nrFont::~nrFont() {
  if (face) FT_Done_Face(static_cast<FT_Face>(face));
  if (library) FT_Done_FreeType(static_cast<FT_Library>(library));
}

void nrFont::buildBitmapLists(int first, int count, int base) {
  FT_Face ftFace = static_cast<FT_Face>(face);
  BitmapUnpack unpack;
  std::vector<GLubyte> rows;
  for (int i = 0; i < count; ++i) {
    nrgl::NewList(base + i, GL_COMPILE);
    FT_UInt glyph = FT_Get_Char_Index(ftFace, first + i);
    FT_GlyphSlot slot = ftFace->glyph;
    if (glyph && FT_Load_Glyph(ftFace, glyph, FT_LOAD_TARGET_MONO) == 0) {
      if (embolden) FT_GlyphSlot_Embolden(slot);
      if (FT_Render_Glyph(slot, FT_RENDER_MODE_MONO) == 0) {
        // FreeType delivers rows top first with padded pitch, glBitmap wants
        // them bottom first and tightly packed.
        const FT_Bitmap& bitmap = slot->bitmap;
        int height = static_cast<int>(bitmap.rows), rowBytes = (static_cast<int>(bitmap.width) + 7) / 8;
        rows.assign(static_cast<size_t>(height) * rowBytes, 0);
        for (int r = 0; r < height; ++r)
          for (int b = 0; b < rowBytes; ++b)
            rows[static_cast<size_t>(r) * rowBytes + b] = bitmap.buffer[(height - 1 - r) * bitmap.pitch + b];
        nrgl::Bitmap(bitmap.width, height, static_cast<GLfloat>(-slot->bitmap_left),
                     static_cast<GLfloat>(height - slot->bitmap_top), static_cast<GLfloat>((slot->advance.x + 32) >> 6),
                     0, rows.data());
      }
    }
    nrgl::EndList();
  }
}

namespace {
const GLenum unpackNames[6] = {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST,   GL_UNPACK_ROW_LENGTH,
                               GL_UNPACK_SKIP_ROWS,  GL_UNPACK_SKIP_PIXELS, GL_UNPACK_ALIGNMENT};
}

nrFont::BitmapUnpack::BitmapUnpack() {
  for (int i = 0; i < 6; ++i) nrgl::GetIntegerv(unpackNames[i], &saved[i]);
  for (int i = 0; i < 6; ++i) nrgl::PixelStorei(unpackNames[i], i == 5 ? 1 : 0);
}

nrFont::BitmapUnpack::~BitmapUnpack() {
  for (int i = 0; i < 6; ++i) nrgl::PixelStorei(unpackNames[i], saved[i]);
}
