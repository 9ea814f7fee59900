#include "nerio3d/core/nrStringDict.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "nerio3d/core/nrString.h"

// At least one bucket, so that a key always has one; a count beyond the
// memory there is falls back to a single bucket. A null key is never entered or found.
nrStringDict::nrStringDict(unsigned n)
    : numBuckets(n ? n : 1), buckets(new (std::nothrow) nrStringDictEntry*[numBuckets]()) {
  if (!buckets) {
    numBuckets = 1;
    buckets = new nrStringDictEntry*[1]();
  }
}

nrStringDict::~nrStringDict() {
  clear();
  delete[] buckets;
}

unsigned nrStringDict::bucketOf(const char* key) const { return nrString::hash(key) % numBuckets; }

bool nrStringDict::enter(const char* key, void* value) {
  if (!key) return false;
  nrStringDictEntry** link = &buckets[bucketOf(key)];
  for (; *link; link = &(*link)->next) {
    if (strcmp((*link)->key, key) == 0) {
      (*link)->value = value;
      return false;
    }
  }
  *link = new nrStringDictEntry{value, strdup(key), nullptr};
  ++size;
  return true;
}

bool nrStringDict::find(const char* key, void*& value) const {
  if (!key) {
    value = nullptr;
    return false;
  }
  for (nrStringDictEntry* e = buckets[bucketOf(key)]; e; e = e->next) {
    if (strcmp(e->key, key) == 0) {
      value = e->value;
      return true;
    }
  }
  value = nullptr;
  return false;
}

bool nrStringDict::remove(const char* key) {
  if (!key) return false;
  for (nrStringDictEntry** link = &buckets[bucketOf(key)]; *link; link = &(*link)->next) {
    if (strcmp((*link)->key, key) == 0) {
      nrStringDictEntry* gone = *link;
      *link = gone->next;
      free(gone->key);
      delete gone;
      --size;
      return true;
    }
  }
  return false;
}

void nrStringDict::clear() {
  for (unsigned b = 0; b < numBuckets; ++b) {
    while (nrStringDictEntry* e = buckets[b]) {
      buckets[b] = e->next;
      free(e->key);
      delete e;
    }
  }
  size = 0;
}

bool nrStringDict::get(unsigned i, void*& value) const {
  for (unsigned b = 0; b < numBuckets; ++b) {
    for (nrStringDictEntry* e = buckets[b]; e; e = e->next) {
      if (i-- == 0) {
        value = e->value;
        return true;
      }
    }
  }
  value = nullptr;
  return false;
}
