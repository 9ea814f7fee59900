#include "nerio3d/core/nrDict.h"

#include <new>

// At least one bucket, so that a key always has one; a count beyond the
// memory there is falls back to a single bucket.
nrDict::nrDict(unsigned n) : numBuckets(n ? n : 1), buckets(new (std::nothrow) nrDictEntry*[numBuckets]()) {
  if (!buckets) {
    numBuckets = 1;
    buckets = new nrDictEntry*[1]();
  }
}

nrDict::~nrDict() {
  clear();
  delete[] buckets;
}

bool nrDict::enter(unsigned long key, void* value) {
  nrDictEntry** link = &buckets[key % numBuckets];
  for (; *link; link = &(*link)->next) {
    if ((*link)->key == key) {
      (*link)->value = value;
      return false;
    }
  }
  *link = new nrDictEntry{key, value, nullptr};
  return true;
}

bool nrDict::find(unsigned long key, void*& value) const {
  for (nrDictEntry* e = buckets[key % numBuckets]; e; e = e->next) {
    if (e->key == key) {
      value = e->value;
      return true;
    }
  }
  value = nullptr;
  return false;
}

bool nrDict::remove(unsigned long key) {
  for (nrDictEntry** link = &buckets[key % numBuckets]; *link; link = &(*link)->next) {
    if ((*link)->key == key) {
      nrDictEntry* gone = *link;
      *link = gone->next;
      delete gone;
      return true;
    }
  }
  return false;
}

void nrDict::clear() {
  for (unsigned b = 0; b < numBuckets; ++b) {
    while (nrDictEntry* e = buckets[b]) {
      buckets[b] = e->next;
      delete e;
    }
  }
}
