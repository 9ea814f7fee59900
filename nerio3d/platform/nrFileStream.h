// Opens files for reading as stdio streams, decompressing gzip files on the
// fly so that readers see the same bytes as from the uncompressed file.
#pragma once

#include <cstdio>

namespace nrFileStream {

// A stream over the file's bytes, or over their decompressed form when the
// file starts with the gzip magic bytes; null when the file cannot be opened.
// A read error (ferror) marks a compressed file that ends early or is
// damaged. Close it with fclose.
FILE* open(const char* path);

}  // namespace nrFileStream
