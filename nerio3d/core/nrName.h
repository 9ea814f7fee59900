// Interned names: one process-wide table of texts, compared by identity.
#pragma once

class nrOutput;

// Block of pooled name text: 4000 bytes, filled front to back.
struct nrNameChunk {
  static constexpr int chunkSize = 4000;
  char mem[chunkSize];
  char* curByte;
  int bytesLeft;
  nrNameChunk* prevChunk;
};

// One interned text; entries are never freed.
class nrNameEntry {
 public:
  const char* string;
  unsigned hash;
  nrNameEntry* next;

  // Returns the entry for text, creating it (at the head of its bucket) when new.
  static const nrNameEntry* insert(const char* text);

  static nrNameEntry** nameTable;
  static constexpr int nameTableSize = 1999;
  static nrNameChunk* chunk;

 private:
  static void initClass();
};

// Handle to an interned text; two names are equal exactly when they share an entry.
class nrName {
 public:
  nrName() : entry(nrNameEntry::insert("")) {}
  nrName(const char* text) : entry(nrNameEntry::insert(text)) {}
  nrName& operator=(const char* text) {
    entry = nrNameEntry::insert(text);
    return *this;
  }

  const char* getString() const { return entry->string; }
  const nrNameEntry* getEntry() const { return entry; }

  bool operator==(const nrName& other) const { return entry == other.entry; }
  bool operator!=(const nrName& other) const { return entry != other.entry; }

  // Prints the text in double quotes.
  void write(nrOutput* out) const;

 private:
  const nrNameEntry* entry;
};
