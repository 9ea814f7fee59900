// One image in memory (a texture level), filled in code or loaded from a file.
#pragma once

#include <GL/gl.h>

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrString.h"
#include "nerio3d/fields/nrContainer.h"

class nrImageFile;
class nrTexture;

class nrImage : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrImage)

  enum MemoryFormatEnum { LUMINANCE, LUMINANCE_ALPHA, RGB, RGBA };
  enum MemoryTypeEnum {
    BYTE,
    UNSIGNED_BYTE,
    SHORT,
    UNSIGNED_SHORT,
    INT,
    UNSIGNED_INT,
    FLOAT,
    TWO_BYTES,
    THREE_BYTES,
    FOUR_BYTES
  };
  enum { FILE_NAME_FIELD, WIDTH_FIELD, HEIGHT_FIELD, MEMORY_FORMAT_FIELD, MEMORY_TYPE_FIELD, PIXELS_FIELD };

  nrImage() : nrImage(getClassType()) {}
  explicit nrImage(nrType* type);

  // A new file name marks the image for loading: load() runs before the
  // pixels are next used. Pixels set afterwards are the image instead.
  void setFileName(const nrString& path) { setFieldValue(fileName, path, FILE_NAME_FIELD); }
  void getFileName(nrString& path) const { path = getFileName(); }
  const nrString& getFileName() const { return getFieldValue(fileName, FILE_NAME_FIELD); }
  void setWidth(int w) { setFieldValue(width, w, WIDTH_FIELD); }
  int getWidth() const { return getFieldValue(width, WIDTH_FIELD); }
  void setHeight(int h) { setFieldValue(height, h, HEIGHT_FIELD); }
  int getHeight() const { return getFieldValue(height, HEIGHT_FIELD); }
  void setMemoryFormat(MemoryFormatEnum format) {
    setFieldValue(memoryFormat, static_cast<int>(format), MEMORY_FORMAT_FIELD);
  }
  MemoryFormatEnum getMemoryFormat() const {
    return static_cast<MemoryFormatEnum>(getFieldValue(memoryFormat, MEMORY_FORMAT_FIELD));
  }
  void setMemoryType(MemoryTypeEnum componentType) {
    setFieldValue(memoryType, static_cast<int>(componentType), MEMORY_TYPE_FIELD);
  }
  MemoryTypeEnum getMemoryType() const {
    return static_cast<MemoryTypeEnum>(getFieldValue(memoryType, MEMORY_TYPE_FIELD));
  }
  // Copies count bytes of pixel data: rows bottom first, tightly packed.
  void setPixels(const void* data, unsigned count);
  const unsigned char* getPixels() const {
    return reinterpret_cast<const unsigned char*>(getFieldValue(pixels, PIXELS_FIELD).getArray());
  }
  unsigned getPixelByteCount() const { return getFieldValue(pixels, PIXELS_FIELD).getCount(); }
  // Sets size, format, type and width x height pixels of data at once.
  void setImage(int width, int height, MemoryFormatEnum format, MemoryTypeEnum type, const void* data);

  // Channels of the memory format (1 to 4), and the bytes the pixels must
  // hold for the size, format and type.
  int getComponentCount() const;
  unsigned getImageByteCount() const;

  // Reads the file named by fileName through the data-file search path;
  // 1 on success, 0 (the image unchanged) otherwise.
  int load();
  // Draws the pixels with their lower left corner at raster position (x, y, z).
  virtual void draw(float x, float y, float z);

  // A new image of half the width and height (a dimension of 1 stays 1), each
  // pixel the average of the 2 x 2 block (or pair) it covers; null when this
  // image lacks the pixels for its size.
  nrImage* createHalfImage();

  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;
  void fieldChanged(short index) override;

 private:
  friend class nrTexture;

  // Reads the whole of an open file as unsigned chars, bottom row first, and
  // closes it; a file of wider data is read as 8 bits after a notice.
  static bool readTile(nrImageFile& file, unsigned char* tile);
  static MemoryFormatEnum formatOfChannels(int channels);
  // Takes values routed in, then loads the image when it is marked for loading.
  void loadIfNeeded();
  // glTexImage2D of this image, as it is, as level of the bound texture;
  // without the pixels its size needs, OpenGL only reserves the level.
  void texImage(int level, GLint internalFormat);

  nrString fileName;
  int width;
  int height;
  int memoryFormat;
  int memoryType;
  nrByteArray pixels;
  bool needsLoading;
};
