#include "nerio3d/platform/nrFileStream.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdlib>
#include <string>

namespace {

std::string readAll(FILE* stream) {
  std::string text;
  for (int c; (c = getc(stream)) != EOF;) text += static_cast<char>(c);
  return text;
}

TEST(nrFileStream, GzipFilesReadAsTheirDecompressedText) {
  char dir[] = "/tmp/nrFileStreamXXXXXX";
  ASSERT_TRUE(mkdtemp(dir));
  std::string text = "#VRML V2.0 utf8\n";
  for (int i = 0; i < 20000; ++i) text += "Transform { translation " + std::to_string(i) + " 0 1 }\n";
  std::string plain = std::string(dir) + "/plain.wrl", packed = std::string(dir) + "/packed.wrl.gz",
              tiny = std::string(dir) + "/tiny.wrl";

  gzFile gz = gzopen(packed.c_str(), "wb");
  ASSERT_TRUE(gz);
  ASSERT_EQ(gzwrite(gz, text.data(), text.size()), int(text.size()));
  gzclose(gz);
  for (auto [path, content] : {std::pair{plain, text}, std::pair{tiny, std::string("\x1f")}}) {
    FILE* f = fopen(path.c_str(), "w");
    fputs(content.c_str(), f);
    fclose(f);
  }

  for (const std::string& path : {plain, packed}) {
    SCOPED_TRACE(path);
    FILE* stream = nrFileStream::open(path.c_str());
    ASSERT_TRUE(stream);
    EXPECT_EQ(readAll(stream), text);
    EXPECT_TRUE(feof(stream));
    EXPECT_EQ(fclose(stream), 0);
  }
  // One byte of the magic alone is plain text.
  FILE* stream = nrFileStream::open(tiny.c_str());
  ASSERT_TRUE(stream);
  EXPECT_EQ(readAll(stream), "\x1f");
  fclose(stream);
  EXPECT_EQ(nrFileStream::open((std::string(dir) + "/missing.wrl").c_str()), nullptr);

  for (const std::string& path : {plain, packed, tiny}) unlink(path.c_str());
  rmdir(dir);
}

}  // namespace
