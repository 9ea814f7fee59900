// A two-dimensional texture: image levels and sampling parameters that the
// graphics context sends to OpenGL as a texture object when it applies it.
#pragma once

#include "nerio3d/arrays/nrFieldArrays.h"
#include "nerio3d/core/nrString.h"
#include "nerio3d/fields/nrContainer.h"

class nrContext;
class nrImage;

class nrTexture : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrTexture)

  // Internal formats; the TEXEL ones choose a format from the image. Int-based,
  // as the format field is: a format from a file outside the list is
  // uploaded with TEXEL16's entry.
  enum FormatEnum : int {
    LUMINANCE,
    LUMINANCE_ALPHA,
    RGB,
    RGBA,
    ALPHA4,
    ALPHA8,
    ALPHA12,
    ALPHA16,
    LUMINANCE4,
    LUMINANCE8,
    LUMINANCE12,
    LUMINANCE16,
    LUMINANCE4_ALPHA4,
    LUMINANCE6_ALPHA2,
    LUMINANCE8_ALPHA8,
    LUMINANCE12_ALPHA4,
    LUMINANCE12_ALPHA12,
    LUMINANCE16_ALPHA16,
    INTENSITY,
    INTENSITY4,
    INTENSITY8,
    INTENSITY12,
    INTENSITY16,
    RGB2,
    RGB4,
    RGB5,
    RGB8,
    RGB10,
    RGB12,
    RGB16,
    RGBA2,
    RGBA4,
    RGB5_A1,
    RGBA8,
    RGB10_A2,
    RGBA12,
    RGBA16,
    TEXEL8,
    TEXEL16,
    TEXEL32
  };
  enum RepeatEnum { CLAMP, REPEAT };
  enum MinFilterEnum { NEAREST_MIN, LINEAR_MIN, MIPMAP };
  enum MagFilterEnum { NEAREST_MAG, LINEAR_MAG };
  enum {
    FILE_NAME_FIELD,
    IMAGE_LEVEL_FIELD,
    FORMAT_FIELD,
    REPEAT_S_FIELD,
    REPEAT_T_FIELD,
    MIN_FILTER_FIELD,
    MAG_FILTER_FIELD
  };

  nrTexture() : nrTexture(getClassType()) {}
  explicit nrTexture(nrType* type);
  ~nrTexture() override;

  // A name other than the one last loaded loads that image file as level 0
  // (resampled up to powers of two); a failure leaves the levels as they were.
  void setFileName(const nrString& name);
  void getFileName(nrString& path) const { path = getFileName(); }
  const nrString& getFileName() const { return getFieldValue(fileName, FILE_NAME_FIELD); }
  void setFormat(FormatEnum format);
  FormatEnum getFormat() const { return static_cast<FormatEnum>(getFieldValue(format, FORMAT_FIELD)); }
  void setRepeatS(RepeatEnum repeat);
  RepeatEnum getRepeatS() const { return static_cast<RepeatEnum>(getFieldValue(repeatS, REPEAT_S_FIELD)); }
  void setRepeatT(RepeatEnum repeat);
  RepeatEnum getRepeatT() const { return static_cast<RepeatEnum>(getFieldValue(repeatT, REPEAT_T_FIELD)); }
  // MIPMAP builds the further levels from a single level 0; the other filters
  // drop them.
  void setMinFilter(MinFilterEnum filter);
  MinFilterEnum getMinFilter() const { return static_cast<MinFilterEnum>(getFieldValue(minFilter, MIN_FILTER_FIELD)); }
  void setMagFilter(MagFilterEnum filter);
  MagFilterEnum getMagFilter() const { return static_cast<MagFilterEnum>(getFieldValue(magFilter, MAG_FILTER_FIELD)); }

  // Level i is mipmap level i.
  int getImageLevelCount() const { return static_cast<int>(getFieldValue(imageLevel, IMAGE_LEVEL_FIELD).getCount()); }
  nrImage* getImageLevel(int level) const;
  void addImageLevel(nrImage* image);

  // Channels of the image in use (of level 0), 0 without one.
  int getComponentCount() const { return componentCount; }
  // The format uploaded: format itself, or for TEXEL16 and TEXEL32 the one
  // chosen from level 0's memory format.
  FormatEnum getEffectiveFormat() const { return effectiveFormat; }
  void findProperComponentType();

  // The texture object's name in the id space shared by all contexts, and the
  // change counter the contexts compare.
  int getId() const { return id; }
  int getVersion() const { return version; }

  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;
  void fieldChanged(short index) override;
  void childChanged(nrContainer* child, short index) override;

 protected:
  friend class nrContext;
  // Binds the texture in context, uploading it when the context lacks this version.
  virtual void draw(nrContext* context);

  void loadFile();
  void buildMipmaps();
  // Drops the levels from keep upwards.
  void dropLevels(unsigned keep);

  nrString fileName;
  nrRefArray imageLevel;
  int format;
  int repeatS;
  int repeatT;
  int minFilter;
  int magFilter;

 private:
  int id;
  int version;
  nrString lastLoaded;
  FormatEnum effectiveFormat;
  int componentCount;
  // The level 0 the levels above it were built from here (not held; only
  // compared), null when there are none or the application gave them.
  nrImage* mipmapSource;
};
