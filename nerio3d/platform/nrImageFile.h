// Reading and writing image files: the texture loaders' only path to image formats.
#pragma once

#include <string>

class nrImageFile {
 public:
  // Channel data types as stored in the file; readTile always delivers unsigned chars.
  enum DataTypeEnum { UNSIGNED_CHAR_DATA, UNSIGNED_SHORT_DATA, FLOAT_DATA };
  // Row order of the pixels readTile delivers: bottom row first (OpenGL's
  // order), or top row first, which readers turn around.
  enum { BOTTOM_FIRST_ORIENTATION = 1, TOP_FIRST_ORIENTATION = 4 };

  nrImageFile() = default;
  ~nrImageFile() { close(); }
  nrImageFile(const nrImageFile&) = delete;
  nrImageFile& operator=(const nrImageFile&) = delete;

  // Reads the header of the image at path (PNG, JPEG, GIF, BMP, TGA, PNM, PSD,
  // HDR); false when it is missing or not an image of a known kind.
  bool open(const char* path);
  void close();
  bool isOpen() const { return !path.empty(); }

  int getWidth() const { return width; }
  int getHeight() const { return height; }
  int getChannels() const { return channels; }
  DataTypeEnum getDataType() const { return dataType; }
  int getOrientation() const { return TOP_FIRST_ORIENTATION; }

  // Reads the whole image as one tile of width x height x channels interleaved
  // unsigned chars (wider data scaled down to 8 bits), in getOrientation()'s
  // row order; false when the pixels cannot be decoded.
  bool readTile(unsigned char* tile);

  // Writes a PNG of 1 to 4 interleaved unsigned-char channels; rows are taken
  // bottom first, as glReadPixels returns them, when bottomFirst is set.
  // False, with nothing printed, when the file cannot be written: the caller
  // reports it.
  static bool writePNG(const char* path, int width, int height, int channels, const unsigned char* pixels,
                       bool bottomFirst);

 private:
  std::string path;
  int width = 0;
  int height = 0;
  int channels = 0;
  DataTypeEnum dataType = UNSIGNED_CHAR_DATA;
};
