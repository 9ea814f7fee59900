#include "nerio3d/render/nrTexture.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/platform/nrImageFile.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrGL.h"
#include "nerio3d/render/nrImage.h"

namespace {

// clang-format off
const char* formatNames[] = {
    "LUMINANCE",          "LUMINANCE_ALPHA",     "RGB",          "RGBA",         "ALPHA4",
    "ALPHA8",             "ALPHA12",             "ALPHA16",      "LUMINANCE4",   "LUMINANCE8",
    "LUMINANCE12",        "LUMINANCE16",         "LUMINANCE4_ALPHA4", "LUMINANCE6_ALPHA2", "LUMINANCE8_ALPHA8",
    "LUMINANCE12_ALPHA4", "LUMINANCE12_ALPHA12", "LUMINANCE16_ALPHA16", "INTENSITY", "INTENSITY4",
    "INTENSITY8",         "INTENSITY12",         "INTENSITY16",  "RGB2",         "RGB4",
    "RGB5",               "RGB8",                "RGB10",        "RGB12",        "RGB16",
    "RGBA2",              "RGBA4",               "RGB5_A1",      "RGBA8",        "RGB10_A2",
    "RGBA12",             "RGBA16",              "TEXEL8",       "TEXEL16",      "TEXEL32"};

// TEXEL8 has no format of its own: it is uploaded as it is, with 0.
const GLint formatGL[] = {
    GL_LUMINANCE,          GL_LUMINANCE_ALPHA,     GL_RGB,         GL_RGBA,        GL_ALPHA4,
    GL_ALPHA8,             GL_ALPHA12,             GL_ALPHA16,     GL_LUMINANCE4,  GL_LUMINANCE8,
    GL_LUMINANCE12,        GL_LUMINANCE16,         GL_LUMINANCE4_ALPHA4, GL_LUMINANCE6_ALPHA2, GL_LUMINANCE8_ALPHA8,
    GL_LUMINANCE12_ALPHA4, GL_LUMINANCE12_ALPHA12, GL_LUMINANCE16_ALPHA16, GL_INTENSITY, GL_INTENSITY4,
    GL_INTENSITY8,         GL_INTENSITY12,         GL_INTENSITY16, GL_R3_G3_B2,    GL_RGB4,
    GL_RGB5,               GL_RGB8,                GL_RGB10,       GL_RGB12,       GL_RGB16,
    GL_RGBA2,              GL_RGBA4,               GL_RGB5_A1,     GL_RGBA8,       GL_RGB10_A2,
    GL_RGBA12,             GL_RGBA16,              0,              GL_LUMINANCE,   GL_LUMINANCE_ALPHA};
// clang-format on
static_assert(sizeof formatGL / sizeof formatGL[0] == nrTexture::TEXEL32 + 1, "one entry per format");

const GLint repeatGL[] = {GL_CLAMP, GL_REPEAT};
const GLint minFilterGL[] = {GL_NEAREST, GL_LINEAR, GL_LINEAR_MIPMAP_LINEAR};
const GLint magFilterGL[] = {GL_NEAREST, GL_LINEAR};

// An enumeration value read from a file may lie outside its table.
template <size_t N>
GLint lookup(const GLint (&table)[N], int value, int fallback) {
  return table[value >= 0 && static_cast<size_t>(value) < N ? value : fallback];
}

long long powerOfTwoAtLeast(long long n) {
  long long p = 1;
  while (p < n) p *= 2;
  return p;
}

}  // namespace

NR_DEFINE_TYPE(nrTexture, nrContainer, "Texture") {
  int formatValues[TEXEL32 + 1];
  for (int i = 0; i <= TEXEL32; ++i) formatValues[i] = i;
  const char* repeatNames[] = {"CLAMP", "REPEAT"};
  const int repeatValues[] = {CLAMP, REPEAT};
  const char* minNames[] = {"NEAREST_MIN", "LINEAR_MIN", "MIPMAP"};
  const int minValues[] = {NEAREST_MIN, LINEAR_MIN, MIPMAP};
  const char* magNames[] = {"NEAREST_MAG", "LINEAR_MAG"};
  const int magValues[] = {NEAREST_MAG, LINEAR_MAG};
  nrSFString::addTypeField(type, "fileName", FILE_NAME_FIELD, nrString(""), &nrTexture::fileName);
  nrMFRef::addTypeField(type, "imageLevel", IMAGE_LEVEL_FIELD, nrImage::getClassType(), &nrTexture::imageLevel);
  nrSFEnum::addTypeField(type, "format", FORMAT_FIELD, TEXEL16, &nrTexture::format);
  type->defineEnums(FORMAT_FIELD, TEXEL32 + 1, formatNames, formatValues);
  nrSFEnum::addTypeField(type, "repeatS", REPEAT_S_FIELD, REPEAT, &nrTexture::repeatS);
  type->defineEnums(REPEAT_S_FIELD, 2, repeatNames, repeatValues);
  nrSFEnum::addTypeField(type, "repeatT", REPEAT_T_FIELD, REPEAT, &nrTexture::repeatT);
  type->defineEnums(REPEAT_T_FIELD, 2, repeatNames, repeatValues);
  nrSFEnum::addTypeField(type, "minFilter", MIN_FILTER_FIELD, NEAREST_MIN, &nrTexture::minFilter);
  type->defineEnums(MIN_FILTER_FIELD, 3, minNames, minValues);
  nrSFEnum::addTypeField(type, "magFilter", MAG_FILTER_FIELD, NEAREST_MAG, &nrTexture::magFilter);
  type->defineEnums(MAG_FILTER_FIELD, 2, magNames, magValues);
}

nrTexture::nrTexture(nrType* type)
    : nrContainer(type),
      id(nrContext::newId(1)),
      version(1),
      effectiveFormat(TEXEL16),
      componentCount(0),
      mipmapSource(nullptr) {
  initFieldDefaults(classType);
}

nrTexture::~nrTexture() {
  destroyFieldContents(classType);
  nrContext::forget(this);
  nrContext::freeId(id, 1);
}

void nrTexture::setFileName(const nrString& name) { setFieldValue(fileName, name, FILE_NAME_FIELD); }
void nrTexture::setFormat(FormatEnum value) { setFieldValue(format, static_cast<int>(value), FORMAT_FIELD); }
void nrTexture::setRepeatS(RepeatEnum value) { setFieldValue(repeatS, static_cast<int>(value), REPEAT_S_FIELD); }
void nrTexture::setRepeatT(RepeatEnum value) { setFieldValue(repeatT, static_cast<int>(value), REPEAT_T_FIELD); }
void nrTexture::setMinFilter(MinFilterEnum value) {
  setFieldValue(minFilter, static_cast<int>(value), MIN_FILTER_FIELD);
}
void nrTexture::setMagFilter(MagFilterEnum value) {
  setFieldValue(magFilter, static_cast<int>(value), MAG_FILTER_FIELD);
}

nrImage* nrTexture::getImageLevel(int level) const {
  if (level < 0 || level >= getImageLevelCount()) return nullptr;
  return static_cast<nrImage*>(imageLevel[static_cast<unsigned>(level)]);
}

void nrTexture::addImageLevel(nrImage* image) {
  if (image) static_cast<nrMFRef*>(getField(IMAGE_LEVEL_FIELD))->append(image);
}

void nrTexture::dropLevels(unsigned keep) {
  if (keep <= 1) mipmapSource = nullptr;
  nrMFRef* levels = static_cast<nrMFRef*>(getField(IMAGE_LEVEL_FIELD));
  while (imageLevel.getCount() > keep) levels->removeIndex(imageLevel.getCount() - 1);
}

void nrTexture::fieldChanged(short index) {
  switch (index) {
    case FILE_NAME_FIELD:
      if (fileName.getString() && lastLoaded.getString() && !strcmp(fileName.getString(), lastLoaded.getString())) {
        nrContainer::fieldChanged(index);
        return;
      }
      loadFile();
      break;
    case IMAGE_LEVEL_FIELD:
      // The levels change here only while none are marked built from level 0:
      // this is the application's change. Levels built from a level 0 it
      // replaced are built again; any other change makes the levels its own.
      if (mipmapSource && getImageLevel(0) != mipmapSource)
        dropLevels(1);
      else
        mipmapSource = nullptr;
      findProperComponentType();
      break;
    case FORMAT_FIELD:
      findProperComponentType();
      break;
    case MIN_FILTER_FIELD:
      if (minFilter != MIPMAP)
        dropLevels(1);
      else if (imageLevel.getCount() == 1)
        buildMipmaps();
      break;
  }
  ++version;
  nrContainer::fieldChanged(index);
}

void nrTexture::childChanged(nrContainer* child, short index) {
  // An image changed in place is sent again; level 0 decides the format, and
  // the levels built from it are built again at the next draw.
  if (imageLevel.getCount() && child == imageLevel[0]) {
    if (mipmapSource == child) dropLevels(1);
    findProperComponentType();
  }
  ++version;
  nrContainer::childChanged(child, index);
}

void nrTexture::copy(nrContainer* from, nrCloneTable* table) {
  nrContainer::copy(from, table);
  if (!from || !from->isOfType(getClassType())) return;
  // The copy shares the levels; it does not read the file again.
  nrTexture* source = static_cast<nrTexture*>(from);
  lastLoaded = source->lastLoaded;
  mipmapSource = getImageLevel(0) == source->mipmapSource ? source->mipmapSource : nullptr;
  findProperComponentType();
  ++version;
}

void nrTexture::loadFile() {
  const char* name = fileName.getString() ? fileName.getString() : "";
  nrString path;
  nrImageFile file;
  if (!nrGlobal::findFile(name, path, nrGlobal::READ_BINARY_FMODE) || !file.open(path.getString())) {
    fprintf(stderr, "Can't read image file %s\n", name);
    return;
  }
  int width = file.getWidth(), height = file.getHeight(), channels = file.getChannels();
  fprintf(stderr, "Reading texture map, %s, %d %d, %d\n", name, width, height, channels);
  // A level holds at most UINT_MAX bytes once resampled up to powers of two:
  // a file's header may announce far more, which is refused before any
  // memory is taken for it, as is memory that cannot be had.
  const long long paddedWidth = powerOfTwoAtLeast(width), paddedHeight = powerOfTwoAtLeast(height);
  std::unique_ptr<unsigned char[]> tile;
  if (paddedWidth <= INT_MAX && paddedHeight <= INT_MAX &&
      static_cast<unsigned long long>(paddedWidth * paddedHeight) <= UINT_MAX / (channels > 1 ? channels : 1))
    tile.reset(new (std::nothrow) unsigned char[static_cast<size_t>(width) * height * channels]);
  if (!tile) {
    fprintf(stderr, "Input texture map, %s, of %d x %d pixels is too large\n", name, width, height);
    return;
  }
  if (!nrImage::readTile(file, tile.get())) {
    fprintf(stderr, "Can't read image file %s\n", name);
    return;
  }
  if (channels < 1 || channels > 4) {
    fprintf(stderr, "Input texture map, %s, must have 1, 2, 3 or 4 channels, but has %d\n", name, channels);
    return;
  }

  int newWidth = static_cast<int>(paddedWidth), newHeight = static_cast<int>(paddedHeight);
  if (newWidth != width || newHeight != height) {
    fprintf(stderr, "Resampling image up to, %d %d\n", newWidth, newHeight);
    const size_t bytes = static_cast<size_t>(newWidth) * newHeight * channels;
    std::unique_ptr<unsigned char[]> resampled(new (std::nothrow) unsigned char[bytes]);
    if (!resampled) {
      fprintf(stderr, "Input texture map, %s, of %d x %d pixels is too large\n", name, width, height);
      return;
    }
    unsigned char* out = resampled.get();
    for (int j = 0; j < newHeight; ++j) {
      const unsigned char* row = &tile[static_cast<size_t>(j) * height / newHeight * width * channels];
      for (int i = 0; i < newWidth; ++i, out += channels) {
        const unsigned char* in = row + static_cast<size_t>(i) * width / newWidth * channels;
        for (int c = 0; c < channels; ++c) out[c] = in[c];
      }
    }
    tile.swap(resampled);
  }

  nrImage* image = new nrImage;
  image->setFileName(name);
  image->setImage(newWidth, newHeight, nrImage::formatOfChannels(channels), nrImage::UNSIGNED_BYTE, tile.get());
  lastLoaded = name;
  dropLevels(0);
  addImageLevel(image);
  if (minFilter == MIPMAP) buildMipmaps();
}

void nrTexture::buildMipmaps() {
  mipmapSource = nullptr;
  nrImage* image = getImageLevel(0);
  while (image && (image->getWidth() > 1 || image->getHeight() > 1)) {
    image = image->createHalfImage();
    addImageLevel(image);
  }
  if (getImageLevelCount() > 1) mipmapSource = getImageLevel(0);
}

void nrTexture::findProperComponentType() {
  nrImage* image = getImageLevel(0);
  if (!image) {
    effectiveFormat = static_cast<FormatEnum>(format);
    componentCount = 0;
    return;
  }
  // Per memory format: its channels, then the formats TEXEL16 and TEXEL32 choose.
  static const struct {
    int components;
    FormatEnum texel16, texel32;
  } choices[] = {
      {1, LUMINANCE16, LUMINANCE16}, {2, LUMINANCE8_ALPHA8, LUMINANCE16_ALPHA16}, {3, RGB5, RGB8}, {4, RGBA4, RGBA8}};
  const auto& choice = choices[image->getComponentCount() - 1];
  componentCount = choice.components;
  if (format == TEXEL16)
    effectiveFormat = choice.texel16;
  else if (format == TEXEL32)
    effectiveFormat = choice.texel32;
  else
    effectiveFormat = static_cast<FormatEnum>(format);
}

void nrTexture::draw(nrContext* context) {
  cleanPendingFields();
  if (minFilter == MIPMAP && imageLevel.getCount() == 1) buildMipmaps();
  // Levels still to be read from their files are read before the context
  // compares versions: reading one changes the version and, for level 0, the
  // effective format.
  for (int i = 0; i < getImageLevelCount(); ++i)
    if (nrImage* image = getImageLevel(i)) image->loadIfNeeded();
  nrgl::BindTexture(GL_TEXTURE_2D, static_cast<GLuint>(id));
  if (!context->isDirty(id, version)) return;
  nrgl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, lookup(minFilterGL, minFilter, NEAREST_MIN));
  nrgl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, lookup(magFilterGL, magFilter, NEAREST_MAG));
  nrgl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, lookup(repeatGL, repeatS, REPEAT));
  nrgl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, lookup(repeatGL, repeatT, REPEAT));
  GLint internalFormat = lookup(formatGL, effectiveFormat, TEXEL16);
  for (int i = 0; i < getImageLevelCount(); ++i)
    if (nrImage* image = getImageLevel(i)) image->texImage(i, internalFormat);
}
