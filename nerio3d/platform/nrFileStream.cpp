#include "nerio3d/platform/nrFileStream.h"

#include <zlib.h>

namespace {

// Scene text is read a character at a time: a large buffer keeps system
// calls rare.
constexpr size_t BUFFER_SIZE = 1 << 16;

// A compressed file that is cut short or damaged ends in a read error, not at
// an ordinary end of file, so that the stream's error flag tells the reader.
ssize_t gzipRead(void* cookie, char* buffer, size_t size) {
  gzFile gz = static_cast<gzFile>(cookie);
  int n = gzread(gz, buffer, static_cast<unsigned>(size));
  if (n > 0) return n;
  int error = Z_OK;
  gzerror(gz, &error);
  return n < 0 || error != Z_OK ? -1 : 0;
}

int gzipClose(void* cookie) { return gzclose(static_cast<gzFile>(cookie)) == Z_OK ? 0 : EOF; }

FILE* openGzip(const char* path) {
  gzFile gz = gzopen(path, "rb");
  if (!gz) return nullptr;
  gzbuffer(gz, BUFFER_SIZE);
  cookie_io_functions_t functions = {gzipRead, nullptr, nullptr, gzipClose};
  FILE* stream = fopencookie(gz, "r", functions);
  if (!stream) gzclose(gz);
  return stream;
}

}  // namespace

FILE* nrFileStream::open(const char* path) {
  FILE* stream = fopen(path, "r");
  if (!stream) return nullptr;
  setvbuf(stream, nullptr, _IOFBF, BUFFER_SIZE);
  int first = getc(stream);
  int second = first == EOF ? EOF : getc(stream);
  if (first == 0x1f && second == 0x8b) {
    fclose(stream);
    stream = openGzip(path);
    if (stream) setvbuf(stream, nullptr, _IOFBF, BUFFER_SIZE);
    return stream;
  }
  // Both bytes came from the stream's buffer, so both go back.
  if (second != EOF) ungetc(second, stream);
  if (first != EOF) ungetc(first, stream);
  return stream;
}
