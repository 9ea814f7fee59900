#include "nerio3d/render/nrImage.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/platform/nrImageFile.h"
#include "nerio3d/render/nrGL.h"

namespace {

const GLenum formatGL[] = {GL_LUMINANCE, GL_LUMINANCE_ALPHA, GL_RGB, GL_RGBA};
const int formatComponents[] = {1, 2, 3, 4};
const GLenum typeGL[] = {GL_BYTE,         GL_UNSIGNED_BYTE, GL_SHORT,   GL_UNSIGNED_SHORT, GL_INT,
                         GL_UNSIGNED_INT, GL_FLOAT,         GL_2_BYTES, GL_3_BYTES,        GL_4_BYTES};
const int typeBytes[] = {1, 1, 2, 2, 4, 4, 4, 2, 3, 4};

// An enumeration value read from a file may lie outside its table.
template <typename T, size_t N>
T lookup(const T (&table)[N], int value, int fallback) {
  return table[value >= 0 && static_cast<size_t>(value) < N ? value : fallback];
}

// Library images are tightly packed. OpenGL reads rows 4-byte aligned by
// default, so for other row lengths the alignment is 1 during the transfer.
class TightRows {
 public:
  explicit TightRows(unsigned rowBytes) : saved(0) {
    if (rowBytes % 4 == 0) return;
    nrgl::GetIntegerv(GL_UNPACK_ALIGNMENT, &saved);
    nrgl::PixelStorei(GL_UNPACK_ALIGNMENT, 1);
  }
  ~TightRows() {
    if (saved) nrgl::PixelStorei(GL_UNPACK_ALIGNMENT, saved);
  }

 private:
  GLint saved;
};

// Averages each 2 x 2 block (a pair along a dimension of 1) of a w x h image
// of n channels into a half-size one.
template <typename T>
void halve(const void* source, int w, int h, int n, void* destination) {
  const T* src = static_cast<const T*>(source);
  T* dst = static_cast<T*>(destination);
  int hw = w > 1 ? w / 2 : 1, hh = h > 1 ? h / 2 : 1;
  int dx = w > 1 ? 1 : 0, dy = h > 1 ? 1 : 0;
  for (int y = 0; y < hh; ++y)
    for (int x = 0; x < hw; ++x)
      for (int c = 0; c < n; ++c) {
        int sx = x * (dx + 1), sy = y * (dy + 1);
        double sum = static_cast<double>(src[(sy * w + sx) * n + c]) + src[(sy * w + sx + dx) * n + c] +
                     src[((sy + dy) * w + sx) * n + c] + src[((sy + dy) * w + sx + dx) * n + c];
        double average = sum / 4;
        if constexpr (std::is_integral_v<T>) average = std::floor(average + 0.5);
        dst[(y * hw + x) * n + c] = static_cast<T>(average);
      }
}

}  // namespace

NR_DEFINE_TYPE(nrImage, nrContainer, "Image") {
  const char* formatNames[] = {"LUMINANCE", "LUMINANCE_ALPHA", "RGB", "RGBA"};
  const int formatValues[] = {LUMINANCE, LUMINANCE_ALPHA, RGB, RGBA};
  const char* typeNames[] = {"BYTE",         "UNSIGNED_BYTE", "SHORT",     "UNSIGNED_SHORT", "INT",
                             "UNSIGNED_INT", "FLOAT",         "TWO_BYTES", "THREE_BYTES",    "FOUR_BYTES"};
  const int typeValues[] = {BYTE,         UNSIGNED_BYTE, SHORT,     UNSIGNED_SHORT, INT,
                            UNSIGNED_INT, FLOAT,         TWO_BYTES, THREE_BYTES,    FOUR_BYTES};
  nrSFString::addTypeField(type, "fileName", FILE_NAME_FIELD, nrString("noName"), &nrImage::fileName);
  nrSFInt::addTypeField(type, "width", WIDTH_FIELD, 0, &nrImage::width);
  nrSFInt::addTypeField(type, "height", HEIGHT_FIELD, 0, &nrImage::height);
  nrSFEnum::addTypeField(type, "memoryFormat", MEMORY_FORMAT_FIELD, RGB, &nrImage::memoryFormat);
  type->defineEnums(MEMORY_FORMAT_FIELD, 4, formatNames, formatValues);
  nrSFEnum::addTypeField(type, "memoryType", MEMORY_TYPE_FIELD, UNSIGNED_BYTE, &nrImage::memoryType);
  type->defineEnums(MEMORY_TYPE_FIELD, 10, typeNames, typeValues);
  nrMFByte::addTypeField(type, "pixels", PIXELS_FIELD, &nrImage::pixels);
}

nrImage::nrImage(nrType* type) : nrContainer(type), needsLoading(false) { initFieldDefaults(classType); }

void nrImage::fieldChanged(short index) {
  if (index == FILE_NAME_FIELD)
    needsLoading = true;
  else if (index == PIXELS_FIELD)
    needsLoading = false;
  // Textures holding the image as a level re-send it.
  notifyParents(index);
  nrContainer::fieldChanged(index);
}

void nrImage::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  if (from && from->isOfType(getClassType())) needsLoading = static_cast<nrImage*>(from)->needsLoading;
}

void nrImage::setPixels(const void* data, unsigned count) {
  pixels.setCount(count);
  if (count && data) memcpy(pixels.getArray(), data, count);
  fieldChanged(PIXELS_FIELD);
}

void nrImage::setImage(int w, int h, MemoryFormatEnum format, MemoryTypeEnum type, const void* data) {
  setWidth(w);
  setHeight(h);
  setMemoryFormat(format);
  setMemoryType(type);
  unsigned count = getImageByteCount();
  pixels.setCount(count);
  if (count && data) memcpy(pixels.getArray(), data, count);
  fieldChanged(PIXELS_FIELD);
}

int nrImage::getComponentCount() const { return lookup(formatComponents, memoryFormat, RGB); }

unsigned nrImage::getImageByteCount() const {
  if (width <= 0 || height <= 0) return 0;
  unsigned long long n = static_cast<unsigned long long>(width) * static_cast<unsigned>(height) *
                         static_cast<unsigned>(getComponentCount()) *
                         static_cast<unsigned>(lookup(typeBytes, memoryType, UNSIGNED_BYTE));
  // An image too large to count in bytes holds no pixels at all.
  return n > UINT_MAX ? 0 : static_cast<unsigned>(n);
}

nrImage::MemoryFormatEnum nrImage::formatOfChannels(int channels) {
  return static_cast<MemoryFormatEnum>(channels - 1);
}

bool nrImage::readTile(nrImageFile& file, unsigned char* tile) {
  if (file.getDataType() != nrImageFile::UNSIGNED_CHAR_DATA)
    fputs("nrTexture(): currently only supports unsigned char data types\n", stdout);
  bool read = file.readTile(tile);
  if (read && file.getOrientation() == nrImageFile::TOP_FIRST_ORIENTATION) {
    size_t row = static_cast<size_t>(file.getWidth()) * file.getChannels();
    std::vector<unsigned char> swap(row);
    for (int top = 0, bottom = file.getHeight() - 1; top < bottom; ++top, --bottom) {
      memcpy(swap.data(), tile + row * top, row);
      memcpy(tile + row * top, tile + row * bottom, row);
      memcpy(tile + row * bottom, swap.data(), row);
    }
  }
  file.close();
  return read;
}

int nrImage::load() {
  // A failed load is not retried on every use; setting the name again retries.
  needsLoading = false;
  const char* name = fileName.getString() ? fileName.getString() : "";
  nrString path;
  if (!nrGlobal::findFile(name, path, nrGlobal::READ_BINARY_FMODE)) return 0;
  nrImageFile file;
  if (!file.open(path.getString())) {
    fprintf(stderr, "nrImage::load() Could not read texture image %s.", name);
    return 0;
  }
  fprintf(stderr, "nrImage::load() Reading texture image %s\n", name);
  int channels = file.getChannels();
  int w = file.getWidth(), h = file.getHeight();
  // An image holds at most UINT_MAX bytes: a file's header may announce far
  // more, which is refused before any memory is taken for it.
  std::unique_ptr<unsigned char[]> tile;
  if (channels >= 1 && channels <= 4 && static_cast<unsigned long long>(w) * h <= UINT_MAX / channels)
    tile.reset(new (std::nothrow) unsigned char[static_cast<size_t>(w) * h * channels]);
  if (!tile || !readTile(file, tile.get())) {
    fprintf(stderr, "nrImage::load() Could not read texture image %s.", name);
    return 0;
  }
  setImage(w, h, formatOfChannels(channels), UNSIGNED_BYTE, tile.get());
  return 1;
}

void nrImage::loadIfNeeded() {
  cleanPendingFields();
  if (needsLoading) load();
}

void nrImage::texImage(int level, GLint internalFormat) {
  TightRows rows(static_cast<unsigned>(width > 0 ? width : 0) * getComponentCount() *
                 lookup(typeBytes, memoryType, UNSIGNED_BYTE));
  unsigned count = getImageByteCount();
  const void* data = count && pixels.getCount() >= count ? pixels.getArray() : nullptr;
  nrgl::TexImage2D(GL_TEXTURE_2D, level, internalFormat, width, height, 0, lookup(formatGL, memoryFormat, RGB),
                   lookup(typeGL, memoryType, UNSIGNED_BYTE), data);
}

void nrImage::draw(float x, float y, float z) {
  loadIfNeeded();
  unsigned count = getImageByteCount();
  if (!count || pixels.getCount() < count) return;
  TightRows rows(count / height);
  nrgl::RasterPos3f(x, y, z);
  nrgl::DrawPixels(width, height, lookup(formatGL, memoryFormat, RGB), lookup(typeGL, memoryType, UNSIGNED_BYTE),
                   pixels.getArray());
}

nrImage* nrImage::createHalfImage() {
  loadIfNeeded();
  unsigned count = getImageByteCount();
  if (!count || pixels.getCount() < count) return nullptr;
  int n = getComponentCount();
  nrImage* half = new nrImage;
  half->setImage(width > 1 ? width / 2 : 1, height > 1 ? height / 2 : 1, getMemoryFormat(), getMemoryType(), nullptr);
  void* dst = half->pixels.getArray();
  const void* src = pixels.getArray();
  switch (getMemoryType()) {
    case BYTE:
      halve<signed char>(src, width, height, n, dst);
      break;
    case SHORT:
      halve<short>(src, width, height, n, dst);
      break;
    case UNSIGNED_SHORT:
      halve<unsigned short>(src, width, height, n, dst);
      break;
    case INT:
      halve<int>(src, width, height, n, dst);
      break;
    case UNSIGNED_INT:
      halve<unsigned int>(src, width, height, n, dst);
      break;
    case FLOAT:
      halve<float>(src, width, height, n, dst);
      break;
    default:
      // Unsigned bytes; the multi-byte list types are not pixel types and are
      // averaged byte by byte.
      halve<unsigned char>(src, width, height, n * lookup(typeBytes, memoryType, UNSIGNED_BYTE), dst);
      break;
  }
  return half;
}
