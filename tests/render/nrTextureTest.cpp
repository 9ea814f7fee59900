#include <filesystem>
#include <fstream>
#include <functional>
#include <tuple>

#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/platform/nrImageFile.h"
#include "nerio3d/render/nrImage.h"
#include "nerio3d/render/nrImageTexture.h"
#include "nerio3d/render/nrTexGen.h"
#include "nerio3d/render/nrTexture.h"
#include "nrCapture.h"
#include "nrRenderFixture.h"

namespace {

using nrtest::Calls;

// A context, and a folder of image files the tests write, removed afterwards.
class Texture : public nrtest::ContextTest {
 protected:
  void SetUp() override {
    ContextTest::SetUp();
    char pattern[] = "/tmp/nrTextureTestXXXXXX";
    dir = mkdtemp(pattern);
  }
  void TearDown() override {
    std::filesystem::remove_all(dir);
    ContextTest::TearDown();
  }

  // Writes a PNG whose channel c at column x, row y (0 the top row) is value(x, y, c).
  std::string png(const char* name, int w, int h, int channels, std::function<int(int, int, int)> value) {
    std::vector<unsigned char> pixels;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        for (int c = 0; c < channels; ++c) pixels.push_back(static_cast<unsigned char>(value(x, y, c)));
    std::string path = dir + "/" + name;
    EXPECT_TRUE(nrImageFile::writePNG(path.c_str(), w, h, channels, pixels.data(), false));
    return path;
  }

  // The glTexImage2D calls among what drawing texture records.
  Calls uploads(nrTexture* texture) {
    nrGLRecorder rec;
    context->setTexture(texture);
    context->setTexture(nullptr);
    return nrtest::callsStarting(rec.calls(), "glTexImage2D");
  }

  std::string dir;
};

// The values of the half image of a 2 x 2 luminance image of the given type.
template <typename T>
std::vector<double> halfOf(nrImage::MemoryTypeEnum type, std::vector<T> pixels) {
  nrImage* image = nrtest::held<nrImage>();
  image->setImage(2, 2, nrImage::LUMINANCE, type, pixels.data());
  nrImage* half = image->createHalfImage();
  const T* p = reinterpret_cast<const T*>(half->getPixels());
  std::vector<double> values(p, p + half->getPixelByteCount() / sizeof(T));
  nrtest::unref(half, image);
  return values;
}

const unsigned char* pixel(nrImage* image, int x, int y) {
  return image->getPixels() + (y * image->getWidth() + x) * image->getComponentCount();
}

TEST_F(Texture, LoadingReportsResamplesToPowersOfTwoAndPutsTheBottomRowFirst) {
  std::string odd = png("odd.png", 100, 60, 3, [](int x, int y, int c) { return c == 0 ? x : c == 1 ? y : 7; });
  std::string square = png("square.png", 64, 64, 4, [](int x, int y, int c) { return x + y + c; });
  nrTexture* texture = nrtest::held<nrTexture>();

  EXPECT_EQ(nrtest::captureStderr([&] { texture->setFileName(odd.c_str()); }),
            "Reading texture map, " + odd + ", 100 60, 3\nResampling image up to, 128 64\n");
  ASSERT_EQ(texture->getImageLevelCount(), 1);
  nrImage* level = texture->getImageLevel(0);
  EXPECT_EQ(std::make_tuple(level->getWidth(), level->getHeight(), level->getMemoryFormat()),
            std::make_tuple(128, 64, nrImage::RGB));
  EXPECT_EQ(texture->getComponentCount(), 3);
  // Nearest sample: column i of 128 from column 100i/128, row j of 64 (from the
  // bottom) from row 60j/64 of the bottom-first source.
  for (int j = 0; j < 64; ++j)
    for (int i = 0; i < 128; ++i) {
      const unsigned char* p = pixel(level, i, j);
      ASSERT_EQ(p[0], i * 100 / 128) << i << "," << j;
      ASSERT_EQ(p[1], 59 - j * 60 / 64) << i << "," << j;
    }

  EXPECT_EQ(nrtest::captureStderr([&] { texture->setFileName(square.c_str()); }),
            "Reading texture map, " + square + ", 64 64, 4\n");
  level = texture->getImageLevel(0);
  EXPECT_EQ(std::make_tuple(texture->getImageLevelCount(), level->getWidth(), texture->getComponentCount()),
            std::make_tuple(1, 64, 4));
  EXPECT_EQ(pixel(level, 5, 0)[2], 5 + 63 + 2);

  int version = texture->getVersion();
  EXPECT_EQ(nrtest::captureStderr([&] { texture->setFileName(square.c_str()); }), "");
  EXPECT_EQ(texture->getVersion(), version) << "the name already loaded changes nothing";
  std::string missing = dir + "/missing.png";
  EXPECT_EQ(nrtest::captureStderr([&] { texture->setFileName(missing.c_str()); }),
            "Can't read image file " + missing + "\n");
  EXPECT_EQ(texture->getImageLevel(0), level);
  // A header announcing more pixels than a level holds is refused before
  // anything is allocated for them; the level in place stays.
  std::string vast = dir + "/vast.ppm";
  std::ofstream(vast, std::ios::binary) << "P6 16777216 16777216 255\n" << std::string(6, '\0');
  EXPECT_EQ(nrtest::captureStderr([&] { texture->setFileName(vast.c_str()); }),
            "Reading texture map, " + vast + ", 16777216 16777216, 3\nInput texture map, " + vast +
                ", of 16777216 x 16777216 pixels is too large\n");
  EXPECT_EQ(texture->getImageLevel(0), level);
  nrImage* image = nrtest::held<nrImage>();
  image->setFileName(vast.c_str());
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(image->load(), 0); }),
            "nrImage::load() Reading texture image " + vast + "\nnrImage::load() Could not read texture image " + vast +
                ".");
  image->unref();

  // 16-bit channels are read as 8 bits after a notice on standard output.
  std::string deep = dir + "/deep.pgm";
  std::ofstream(deep, std::ios::binary) << "P5 2 1 65535\n" << std::string("\x12\x12\xab\xab", 4);
  EXPECT_EQ(nrtest::captureStdout([&] { nrtest::captureStderr([&] { texture->setFileName(deep.c_str()); }); }),
            "nrTexture(): currently only supports unsigned char data types\n");
  level = texture->getImageLevel(0);
  EXPECT_EQ(level->getMemoryFormat(), nrImage::LUMINANCE);
  EXPECT_EQ(pixel(level, 1, 0)[0], 0xab);
  texture->unref();
}

TEST_F(Texture, FormatFollowsLevelZeroAndEachVersionIsUploadedOnce) {
  // Memory formats run LUMINANCE, LUMINANCE_ALPHA, RGB, RGBA: one component more each.
  struct Case {
    nrImage::MemoryFormatEnum memory;
    nrTexture::FormatEnum format;
    const char* internal;
  } cases[] = {{nrImage::RGBA, nrTexture::TEXEL32, "GL_RGBA8"}, {nrImage::RGBA, nrTexture::TEXEL16, "GL_RGBA4"},
               {nrImage::RGB, nrTexture::TEXEL32, "GL_RGB8"}, {nrImage::RGB, nrTexture::TEXEL16, "GL_RGB5"},
               {nrImage::LUMINANCE_ALPHA, nrTexture::TEXEL32, "GL_LUMINANCE16_ALPHA16"},
               {nrImage::LUMINANCE_ALPHA, nrTexture::TEXEL16, "GL_LUMINANCE8_ALPHA8"},
               {nrImage::LUMINANCE, nrTexture::TEXEL32, "GL_LUMINANCE16"},
               {nrImage::RGB, nrTexture::RGB2, "GL_R3_G3_B2"}, {nrImage::RGBA, nrTexture::TEXEL8, "0"},
               // Outside the list, as a file may give it: TEXEL16's entry.
               {nrImage::RGB, nrTexture::FormatEnum(999), "GL_LUMINANCE"}};
  const char* formatNames[] = {"GL_LUMINANCE", "GL_LUMINANCE_ALPHA", "GL_RGB", "GL_RGBA"};
  for (const Case& c : cases) {
    nrTexture* texture = nrtest::held<nrTexture>();
    texture->setFormat(c.format);
    EXPECT_EQ(texture->getEffectiveFormat(), c.format) << "without an image";
    nrImage* image = new nrImage;
    image->setImage(1, 1, c.memory, nrImage::UNSIGNED_BYTE, "\x10\x20\x30\x40");
    texture->addImageLevel(image);
    EXPECT_EQ(texture->getComponentCount(), c.memory + 1) << c.internal;
    EXPECT_EQ(uploads(texture), Calls{std::string("glTexImage2D(GL_TEXTURE_2D, 0, ") + c.internal + ", 1, 1, 0, " +
                                      formatNames[c.memory] + ", GL_UNSIGNED_BYTE, ptr)"})
        << c.internal;
    texture->unref();
  }
  EXPECT_EQ(getInt(GL_UNPACK_ALIGNMENT), 4) << "restored after rows of 3 bytes";

  // Mipmap levels average 2 x 2 blocks down to 1 x 1.
  nrTexture* texture = nrtest::held<nrTexture>();
  nrImage* image = new nrImage;
  unsigned char rgba[32] = {};
  const unsigned char red[8] = {0, 10, 20, 30, 40, 50, 60, 71};
  for (int i = 0; i < 8; ++i) rgba[i * 4] = red[i];
  image->setImage(4, 2, nrImage::RGBA, nrImage::UNSIGNED_BYTE, rgba);
  texture->addImageLevel(image);
  texture->setMinFilter(nrTexture::MIPMAP);
  ASSERT_EQ(texture->getImageLevelCount(), 3);
  EXPECT_EQ(pixel(texture->getImageLevel(1), 0, 0)[0], 25);
  EXPECT_EQ(pixel(texture->getImageLevel(1), 1, 0)[0], 45) << "rounded to nearest";
  EXPECT_EQ(pixel(texture->getImageLevel(2), 0, 0)[0], 35);

  nrGLRecorder rec;
  context->setTexture(texture);
  Calls expected = {"glBindTexture(GL_TEXTURE_2D, " + std::to_string(texture->getId()) + ")",
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)",
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST)",
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)"};
  for (int level = 0; level < 3; ++level) {
    nrImage* l = texture->getImageLevel(level);
    expected.push_back("glTexImage2D(GL_TEXTURE_2D, " + std::to_string(level) + ", GL_RGBA4, " +
                       std::to_string(l->getWidth()) + ", " + std::to_string(l->getHeight()) +
                       ", 0, GL_RGBA, GL_UNSIGNED_BYTE, ptr)");
  }
  EXPECT_EQ(rec.calls(), expected);
  rec.clear();
  context->setTexture(nullptr);
  context->setTexture(texture);
  context->setTexture(nullptr);
  EXPECT_EQ(rec.calls(), Calls{expected[0]}) << "the context holds this version";
  texture->setMinFilter(nrTexture::LINEAR_MIN);
  EXPECT_EQ(texture->getImageLevelCount(), 1);
  EXPECT_EQ(uploads(texture).size(), 1u);
  EXPECT_EQ(uploads(texture).size(), 0u);
  nrImage* half = image->createHalfImage();
  half->ref();
  texture->getImageLevel(0)->copy(half);
  EXPECT_EQ(uploads(texture).size(), 1u) << "an image copied into is sent again";

  // Levels built here follow level 0 when it changes or is replaced; levels
  // the application gave stay.
  texture->setMinFilter(nrTexture::MIPMAP);
  ASSERT_EQ(texture->getImageLevelCount(), 2);
  texture->getImageLevel(0)->setImage(4, 4, nrImage::RGBA, nrImage::UNSIGNED_BYTE, nullptr);
  EXPECT_EQ(uploads(texture).size(), 3u);
  EXPECT_EQ(texture->getImageLevel(1)->getWidth(), 2);
  static_cast<nrMFRef*>(texture->getField("imageLevel"))->set(0, half);
  EXPECT_EQ(uploads(texture).size(), 2u);
  EXPECT_EQ(texture->getImageLevel(1)->getWidth(), 1);
  nrImage* given = new nrImage;
  given->setImage(1, 1, nrImage::RGBA, nrImage::UNSIGNED_BYTE, rgba);
  static_cast<nrMFRef*>(texture->getField("imageLevel"))->set(1, given);
  half->setPixels(rgba, 8);
  EXPECT_EQ(texture->getImageLevel(1), given);
  nrtest::unref(texture, half);
}

TEST(nrImage, HalfImagesAverageEveryTypeAndRoundIntegersToTheNearest) {
  using V = std::vector<double>;
  EXPECT_EQ(halfOf<signed char>(nrImage::BYTE, {-4, -3, 10, 20}), V{6});
  EXPECT_EQ(halfOf<unsigned char>(nrImage::UNSIGNED_BYTE, {0, 1, 255, 254}), V{128});
  EXPECT_EQ(halfOf<short>(nrImage::SHORT, {-1000, 3000, 1, 4}), V{501});
  EXPECT_EQ(halfOf<unsigned short>(nrImage::UNSIGNED_SHORT, {65535, 65534, 3, 6}), V{32770});
  EXPECT_EQ(halfOf<int>(nrImage::INT, {2000000000, 2000000000, 2000000000, 2000000000}), V{2000000000});
  EXPECT_EQ(halfOf<unsigned>(nrImage::UNSIGNED_INT, {4000000000u, 4000000000u, 4000000000u, 4000000001u}),
            V{4000000000u});
  EXPECT_EQ(halfOf<float>(nrImage::FLOAT, {0.5f, 0.25f, 1, 2}), V{0.9375});
  // The list types are no pixel types: their bytes are averaged one by one.
  EXPECT_EQ(halfOf<unsigned char>(nrImage::TWO_BYTES, {10, 20, 30, 40, 50, 60, 70, 80}), (V{40, 50}));

  // More bytes than a count holds means no pixels, never a count that wrapped.
  nrImage* huge = nrtest::held<nrImage>();
  huge->setImage(65535, 65537, nrImage::RGBA, nrImage::UNSIGNED_BYTE, nullptr);
  EXPECT_EQ(huge->getImageByteCount(), 0u);
  EXPECT_EQ(huge->createHalfImage(), nullptr);
  huge->setPixels(nullptr, 8);
  EXPECT_EQ(huge->getPixelByteCount(), 8u);
  huge->unref();
}

TEST_F(Texture, ATexturedQuadShowsTheImageUpright) {
  const int corners[4][3] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
  std::string path = png("corners.png", 2, 2, 3, [&](int x, int y, int c) { return corners[y * 2 + x][c]; });
  nrTexture* texture = nrtest::held<nrTexture>();
  nrtest::captureStderr([&] { texture->setFileName(path.c_str()); });
  context->setTexture(texture);
  context->setTexEnable(1);
  nrgl::Begin(GL_QUADS);
  const float quad[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  for (const auto& v : quad) {
    nrgl::TexCoord2f(v[0], v[1]);
    nrgl::Vertex2f(v[0] * 2 - 1, v[1] * 2 - 1);
  }
  nrgl::End();
  // Top left, top right, bottom left, bottom right of the 64 x 64 drawable.
  const int at[4][2] = {{8, 56}, {56, 56}, {8, 8}, {56, 8}};
  for (int i = 0; i < 4; ++i)
    EXPECT_EQ(pixelAt(at[i][0], at[i][1]), std::vector<int>(corners[i], corners[i] + 3)) << "corner " << i;
  texture->unref();
}

TEST_F(Texture, ImagesLoadOnDemandAndImageTexturesFollowTheirUrl) {
  std::string red = png("red.png", 2, 2, 3, [](int, int, int c) { return c == 0 ? 255 : 0; });
  std::string blue = png("blue.png", 3, 1, 3, [](int, int, int c) { return c == 2 ? 255 : 0; });
  std::string text = dir + "/text.png";
  std::ofstream(text) << "not an image";

  nrImage* image = nrtest::held<nrImage>();
  image->setFileName((dir + "/absent.png").c_str());
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(image->load(), 0); }), "");
  image->setFileName(text.c_str());
  EXPECT_EQ(nrtest::captureStderr([&] { EXPECT_EQ(image->load(), 0); }),
            "nrImage::load() Could not read texture image " + text + ".");
  image->setFileName(red.c_str());
  context->clear(nrContext::COLOR_CLEAR);
  // Drawing loads the image first: the pixels land at the raster position.
  EXPECT_EQ(nrtest::captureStderr([&] { image->draw(-1, -1, 0); }),
            "nrImage::load() Reading texture image " + red + "\n");
  EXPECT_EQ(image->getWidth(), 2);
  EXPECT_EQ(pixelAt(1, 1)[0], 255);
  EXPECT_EQ(pixelAt(2, 2)[0], 0);
  image->unref();

  // A level still to be loaded decides the format once loaded, at the upload.
  std::string rgba = png("rgba.png", 2, 2, 4, [](int, int, int) { return 9; });
  nrTexture* lazy = nrtest::held<nrTexture>();
  lazy->setFormat(nrTexture::TEXEL32);
  nrImage* pending = new nrImage;
  pending->setFileName(rgba.c_str());
  lazy->addImageLevel(pending);
  Calls sent;
  nrtest::captureStderr([&] { sent = uploads(lazy); });
  EXPECT_EQ(sent, Calls{"glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, ptr)"});
  EXPECT_EQ(uploads(lazy), Calls{}) << "loading is part of the version uploaded";
  // A file name routed into the level is read at the next upload, and the
  // image's own getters take a routed value first.
  nrImage* source = nrtest::held<nrImage>();
  source->connect(nrImage::FILE_NAME_FIELD, pending, nrImage::FILE_NAME_FIELD);
  source->setFileName(red.c_str());
  nrtest::captureStderr([&] { sent = uploads(lazy); });
  EXPECT_EQ(sent, Calls{"glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, 2, 2, 0, GL_RGB, GL_UNSIGNED_BYTE, ptr)"});
  source->setFileName(blue.c_str());
  EXPECT_STREQ(pending->getFileName().getString(), blue.c_str());
  source->unref();
  lazy->unref();

  nrImageTexture* texture = nrtest::held<nrImageTexture>();
  nrtest::captureStderr([&] { texture->setUrl(red.c_str()); });
  nrString name;
  texture->getFileName(name);
  EXPECT_STREQ(name.getString(), red.c_str());
  nrImage* level = texture->getImageLevel(0);
  ASSERT_NE(level, nullptr);
  texture->setMinFilter(nrTexture::MIPMAP);
  EXPECT_EQ(texture->getImageLevelCount(), 2);
  int version = texture->getVersion();
  EXPECT_EQ(nrtest::captureStderr([&] { texture->setUrl(blue.c_str()); }),
            "nrImage::load() Reading texture image " + blue + "\n")
      << "level 0 reloads itself, as it is";
  EXPECT_EQ(texture->getImageLevel(0), level);
  EXPECT_EQ(level->getWidth(), 3);
  EXPECT_EQ(pixel(level, 0, 0)[2], 255);
  EXPECT_EQ(texture->getImageLevelCount(), 1) << "levels of the old image are dropped";
  EXPECT_GT(texture->getVersion(), version);
  EXPECT_EQ(nrtest::captureStderr([&] { texture->setUrl(blue.c_str()); }), "");
  texture->unref();
}

TEST_F(Texture, GenerationGivesEveryPlaneAsObjectPlane) {
  nrTexGen* texGen = nrtest::held<nrTexGen>();
  texGen->setModeS(nrTexGen::EYE_LINEAR);
  texGen->setModeT(nrTexGen::EYE_LINEAR_IDENT);
  texGen->setModeR(nrTexGen::OBJECT_LINEAR);
  texGen->setModeQ(nrTexGen::SPHERE_MAP);
  texGen->setPlaneR(nrVec4f(1, 2, 3, 4));
  nrVec4f planeR;
  texGen->getPlaneR(planeR);
  EXPECT_EQ(planeR, nrVec4f(1, 2, 3, 4));
  context->setTexGenEnable(1);
  nrGLRecorder rec;
  context->setTexGen(texGen);
  EXPECT_EQ(
      rec.calls(),
      (Calls{"glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR)", "glTexGenfv(GL_S, GL_OBJECT_PLANE, {1, 0, 0, 0})",
             "glPushMatrix()", "glLoadIdentity()", "glTexGenfv(GL_T, GL_OBJECT_PLANE, {0, 1, 0, 0})",
             "glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR)",
             "glTexGeni(GL_R, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR)",
             "glTexGenfv(GL_R, GL_OBJECT_PLANE, {1, 2, 3, 4})", "glTexGeni(GL_Q, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP)",
             "glPopMatrix()", "glEnable(GL_TEXTURE_GEN_S)", "glEnable(GL_TEXTURE_GEN_T)", "glEnable(GL_TEXTURE_GEN_R)",
             "glEnable(GL_TEXTURE_GEN_Q)"}));
  texGen->setModeR(nrTexGen::OFF);
  context->setTexGen(nullptr);
  context->setTexGen(texGen);
  EXPECT_FALSE(isOn(GL_TEXTURE_GEN_R));
  EXPECT_TRUE(isOn(GL_TEXTURE_GEN_Q));
  // A mode outside the list, as a file may give it, is held as it is.
  texGen->setModeS(nrTexGen::ModeEnum(99));
  context->setTexGenEnable(0);
  context->setTexGenEnable(1);
  EXPECT_TRUE(isOn(GL_TEXTURE_GEN_S));
  int version = texGen->getVersion();
  nrTexGen* plain = nrtest::held<nrTexGen>();
  texGen->copy(plain);
  EXPECT_GT(texGen->getVersion(), version) << "a copy counts as a change";
  nrtest::unref(texGen, plain);
}

}  // namespace
