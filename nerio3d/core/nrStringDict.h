// Chained hash table from strings (privately copied) to untyped pointers.
#pragma once

struct nrStringDictEntry {
  void* value;
  char* key;
  nrStringDictEntry* next;
};

class nrStringDict {
 public:
  explicit nrStringDict(unsigned buckets);
  ~nrStringDict();
  nrStringDict(const nrStringDict&) = delete;
  nrStringDict& operator=(const nrStringDict&) = delete;

  // Replaces only the value of a present key and returns false; else appends a
  // new entry with a private copy of the key and returns true.
  bool enter(const char* key, void* value);
  bool find(const char* key, void*& value) const;
  bool remove(const char* key);
  void clear();

  unsigned getSize() const { return size; }
  // The i-th entry in enumeration order: buckets upward, each chain head to tail.
  bool get(unsigned i, void*& value) const;

 private:
  unsigned bucketOf(const char* key) const;

  unsigned numBuckets;
  unsigned size = 0;
  nrStringDictEntry** buckets;
};
