#include "nerio3d/core/nrName.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "nerio3d/core/nrString.h"
#include "nerio3d/fields/nrOutput.h"

nrNameEntry** nrNameEntry::nameTable = nullptr;
nrNameChunk* nrNameEntry::chunk = nullptr;

void nrNameEntry::initClass() {
  nameTable = static_cast<nrNameEntry**>(calloc(nameTableSize, sizeof(nrNameEntry*)));
  chunk = nullptr;
}

// A null text interns as the empty one.
const nrNameEntry* nrNameEntry::insert(const char* text) {
  if (!text) text = "";
  unsigned h = nrString::hash(text);
  if (!nameTable) initClass();
  unsigned bucket = h % nameTableSize;
  for (nrNameEntry* e = nameTable[bucket]; e; e = e->next)
    if (e->hash == h && strcmp(e->string, text) == 0) return e;

  int length = static_cast<int>(strlen(text)) + 1;
  char* stored;
  if (length < nrNameChunk::chunkSize) {
    if (!chunk || chunk->bytesLeft < length) {
      nrNameChunk* fresh = static_cast<nrNameChunk*>(malloc(sizeof(nrNameChunk)));
      fresh->curByte = fresh->mem;
      fresh->bytesLeft = nrNameChunk::chunkSize;
      fresh->prevChunk = chunk;
      chunk = fresh;
    }
    stored = chunk->curByte;
    chunk->curByte += length;
    chunk->bytesLeft -= length;
  } else {
    stored = static_cast<char*>(malloc(length));
  }
  memcpy(stored, text, length);

  nrNameEntry* entry = new nrNameEntry{stored, h, nameTable[bucket]};
  nameTable[bucket] = entry;
  return entry;
}

void nrName::write(nrOutput* out) const {
  if (out && out->getStream()) fprintf(out->getStream(), "\"%s\"", entry->string);
}
