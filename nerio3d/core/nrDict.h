// Chained hash table from unsigned integer keys to untyped pointers.
#pragma once

#include "nerio3d/core/nrBlockAllocator.h"

struct nrDictEntry {
  NR_POOLED_OBJECTS
  unsigned long key;
  void* value;
  nrDictEntry* next;
};

class nrDict {
 public:
  explicit nrDict(unsigned buckets);
  ~nrDict();
  nrDict(const nrDict&) = delete;
  nrDict& operator=(const nrDict&) = delete;

  // Replaces the value of a present key and returns false; else appends a new
  // entry at the end of the key's chain and returns true.
  bool enter(unsigned long key, void* value);
  bool find(unsigned long key, void*& value) const;
  bool remove(unsigned long key);
  void clear();

  unsigned getNumBuckets() const { return numBuckets; }

 private:
  unsigned numBuckets;
  nrDictEntry** buckets;
};
