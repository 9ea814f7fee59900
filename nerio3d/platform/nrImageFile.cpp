#include "nerio3d/platform/nrImageFile.h"

#include <stb/stb_image.h>
#include <stb/stb_image_write.h>

#include <cstring>
#include <vector>

bool nrImageFile::open(const char* name) {
  close();
  if (!name || !stbi_info(name, &width, &height, &channels)) return false;
  if (stbi_is_hdr(name))
    dataType = FLOAT_DATA;
  else if (stbi_is_16_bit(name))
    dataType = UNSIGNED_SHORT_DATA;
  else
    dataType = UNSIGNED_CHAR_DATA;
  path = name;
  return true;
}

void nrImageFile::close() {
  path.clear();
  width = height = channels = 0;
  dataType = UNSIGNED_CHAR_DATA;
}

bool nrImageFile::readTile(unsigned char* tile) {
  if (!isOpen()) return false;
  int w, h, n;
  stbi_uc* pixels = stbi_load(path.c_str(), &w, &h, &n, channels);
  if (!pixels) return false;
  // The file could have changed since its header was read; only an image of
  // the announced size fills the tile.
  bool same = w == width && h == height;
  if (same) memcpy(tile, pixels, static_cast<size_t>(width) * height * channels);
  stbi_image_free(pixels);
  return same;
}

bool nrImageFile::writePNG(const char* path, int width, int height, int channels, const unsigned char* pixels,
                           bool bottomFirst) {
  if (!path || !pixels || width <= 0 || height <= 0 || channels < 1 || channels > 4) return false;
  size_t row = static_cast<size_t>(width) * channels;
  if (!bottomFirst) return stbi_write_png(path, width, height, channels, pixels, static_cast<int>(row)) != 0;
  std::vector<unsigned char> flipped(row * height);
  for (int y = 0; y < height; ++y) memcpy(&flipped[row * y], pixels + row * (height - 1 - y), row);
  return stbi_write_png(path, width, height, channels, flipped.data(), static_cast<int>(row)) != 0;
}
