// Direct access to the read buffer of a stdio stream, for readers that take
// one character at a time: the characters from the stream's read position to
// the end of its buffer are consumed by moving that position, exactly as
// getc_unlocked does, without a call per character. Where the C library does
// not expose its buffer, available is false and readers use getc.
#pragma once

#include <cstdio>

namespace nrStdioBuffer {

#if defined(__GLIBC__)
constexpr bool available = true;
inline const char* begin(FILE* f) { return f->_IO_read_base; }
inline const char* position(FILE* f) { return f->_IO_read_ptr; }
inline const char* end(FILE* f) { return f->_IO_read_end; }
// p must lie within [begin, end] of the stream's current buffer.
inline void setPosition(FILE* f, const char* p) { f->_IO_read_ptr = const_cast<char*>(p); }
#else
constexpr bool available = false;
inline const char* begin(FILE*) { return nullptr; }
inline const char* position(FILE*) { return nullptr; }
inline const char* end(FILE*) { return nullptr; }
inline void setPosition(FILE*, const char*) {}
#endif

}  // namespace nrStdioBuffer
