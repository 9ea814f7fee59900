// A font found through fontconfig and rasterised by FreeType, turned into
// OpenGL display lists of bitmap characters.
#pragma once

class nrFont {
 public:
  // The font fontconfig matches best for family (a family name, or a generic
  // one such as "serif" or "sans-serif"), weight (100 to 900; 400 regular, 700
  // bold) and slant, sized so that a line (ascent plus descent) is pixelHeight
  // pixels tall (1 to 32767). A named family must be matched by that family itself, not by
  // a substitute. 0 when nothing fits or the file cannot be read.
  static nrFont* open(const char* family, int weight, bool italic, int pixelHeight);
  ~nrFont();
  nrFont(const nrFont&) = delete;
  nrFont& operator=(const nrFont&) = delete;

  // Compiles count display lists from base: list base + i draws the glyph of
  // character code first + i with glBitmap at the raster position and moves
  // the raster position on by the glyph's advance. A code the font has no
  // glyph for gets a list that does nothing.
  void buildBitmapLists(int first, int count, int base);

  // Serves a generic family with the named one instead of fontconfig's own
  // choice, e.g. setFamilyAlias("serif", "Liberation Serif"); a null family
  // removes the alias.
  static void setFamilyAlias(const char* generic, const char* family);

  // Tightly packed bitmap rows while it lives: saves the six unpack
  // pixel-store values, zeroes swap-bytes, LSB-first, row length, skipped rows
  // and pixels, sets the alignment to 1, and restores all six at the end.
  class BitmapUnpack {
   public:
    BitmapUnpack();
    ~BitmapUnpack();
    BitmapUnpack(const BitmapUnpack&) = delete;
    BitmapUnpack& operator=(const BitmapUnpack&) = delete;

   private:
    int saved[6];
  };

 private:
  nrFont() = default;

  void* library = nullptr;  // FT_Library
  void* face = nullptr;     // FT_Face
  bool embolden = false;    // fontconfig asks for a synthetic bold
};
