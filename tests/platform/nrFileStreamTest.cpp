#include "nerio3d/platform/nrFileStream.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

#include <fstream>
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
  const std::string plain = dir + std::string("/plain.wrl"), packed = plain + ".gz", tiny = dir + std::string("/tiny");
  gzFile gz = gzopen(packed.c_str(), "wb");
  ASSERT_EQ(gzwrite(gz, text.data(), text.size()), int(text.size()));
  gzclose(gz);
  std::ofstream(plain) << text;
  std::ofstream(tiny) << '\x1f';

  // One byte of the magic alone is plain text.
  for (auto [path, content] : {std::pair{plain, text}, std::pair{packed, text}, std::pair{tiny, std::string("\x1f")}}) {
    SCOPED_TRACE(path);
    FILE* stream = nrFileStream::open(path.c_str());
    ASSERT_TRUE(stream);
    EXPECT_EQ(readAll(stream), content);
    EXPECT_TRUE(feof(stream));
    EXPECT_EQ(fclose(stream), 0);
    unlink(path.c_str());
  }
  EXPECT_EQ(nrFileStream::open((dir + std::string("/missing.wrl")).c_str()), nullptr);
  rmdir(dir);
}

}  // namespace
