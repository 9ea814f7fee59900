// 64-bit mask held as a low and a high 32-bit word: field sets, pending-work
// sets and render-state masks.
#pragma once

#include <cstdint>

class nrOutput;

class nrBitMask {
 public:
  uint32_t low = 0;
  uint32_t high = 0;

  nrBitMask() = default;
  nrBitMask(uint32_t lowWord, uint32_t highWord) : low(lowWord), high(highWord) {}
  // A plain 64-bit value converts, so masks can be written as literals.
  nrBitMask(uint64_t bits) : low(static_cast<uint32_t>(bits)), high(static_cast<uint32_t>(bits >> 32)) {}
  static nrBitMask fromBits(uint64_t bits) { return nrBitMask(bits); }

  uint64_t getBits() const { return (static_cast<uint64_t>(high) << 32) | low; }
  bool isZero() const { return (low | high) == 0; }
  bool isBitSet(int bit) const { return bit >= 0 && bit < 64 && ((getBits() >> bit) & 1); }
  void setBit(int bit) {
    if (bit >= 0 && bit < 64) *this = fromBits(getBits() | (uint64_t(1) << bit));
  }
  void clearBit(int bit) {
    if (bit >= 0 && bit < 64) *this = fromBits(getBits() & ~(uint64_t(1) << bit));
  }

  nrBitMask operator|(const nrBitMask& o) const { return nrBitMask(low | o.low, high | o.high); }
  nrBitMask operator&(const nrBitMask& o) const { return nrBitMask(low & o.low, high & o.high); }
  nrBitMask operator~() const { return nrBitMask(~low, ~high); }
  nrBitMask& operator|=(const nrBitMask& o) { return *this = *this | o; }
  nrBitMask& operator&=(const nrBitMask& o) { return *this = *this & o; }
  bool operator==(const nrBitMask& o) const { return low == o.low && high == o.high; }
  bool operator!=(const nrBitMask& o) const { return !(*this == o); }

  // "0x%x%x": high word then low word, each without zero padding (high 1 and
  // low 5 print 0x15); long-standing output kept as it is.
  void write(nrOutput* out) const;
};
