#include "nerio3d/vl/vlInput.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/platform/nrStdioBuffer.h"
#include "nerio3d/vl/vlReadError.h"

namespace {

enum : unsigned char { SPACE = 1, DIGIT = 2, XDIGIT = 4, IDENT = 8, NODE_NAME = 16 };

// Classes of every byte in the C locale, whatever locale the program sets.
// Bytes above 127 are neither letters nor controls there: they may stand in
// node names (so UTF-8 names read whole) but never in identifiers.
struct CharClasses {
  unsigned char bits[256];
  constexpr CharClasses() : bits() {
    for (int c = 0; c < 256; ++c) {
      bool digit = c >= '0' && c <= '9';
      bool alnum = digit || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
      bool space = c == ' ' || (c >= '\t' && c <= '\r');
      bool cntrl = c < 32 || c == 127;
      bool special = c == '+' || c == '\'' || c == '"' || c == '\\' || c == '{' || c == '}';
      unsigned char b = 0;
      if (space) b |= SPACE;
      if (digit) b |= DIGIT;
      if (digit || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')) b |= XDIGIT;
      if (alnum || c == '_' || c == '-' || c == '%') b |= IDENT;
      if (alnum || (!special && !space && !cntrl)) b |= NODE_NAME;
      bits[c] = b;
    }
  }
};
constexpr CharClasses classes;

// c is a character code from getc or EOF.
inline bool is(int c, unsigned char cls) { return c >= 0 && (classes.bits[c] & cls); }

constexpr int MAX_IDENT = 255;
constexpr int CHUNK = 255;
constexpr int MAX_HEADER = 256;

// Powers of ten that a double holds exactly.
constexpr double exactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int MAX_EXACT_POWER = 22;
constexpr unsigned long long MAX_EXACT_MANTISSA = 1ull << 53;
constexpr int MAX_MANTISSA_DIGITS = 19;
// The most numbers in one element that readFloatRun takes.
constexpr unsigned MAX_RUN_GROUP = 4;

// Adds decimal digit c to a mantissa that holds the first 19 significant
// digits; further ones are kept as text in more.
inline void addDigit(int c, unsigned long long& mantissa, int& digits, std::string& more) {
  if (!mantissa && c == '0') return;
  if (++digits <= MAX_MANTISSA_DIGITS) {
    mantissa = mantissa * 10 + (c - '0');
  } else {
    if (digits == MAX_MANTISSA_DIGITS + 1) more.clear();
    more += static_cast<char>(c);
  }
}

}  // namespace

// One public read. It works on a local copy of the window, so that the tight
// loops keep the read position in a register, and hands the position back to
// the stream at the end.
class vlInput::Scan {
 public:
  explicit Scan(vlInput* in) : in(in) {
    in->validateWindow();
    p = in->cur;
    e = in->lim;
  }
  ~Scan() {
    in->cur = p;
    in->syncWindow();
  }

  int next() { return p < e ? static_cast<unsigned char>(*p++) : refill(); }
  // Gives back c, the character next returned last; EOF is not given back.
  void back(int c) {
    if (c == EOF) return;
    if (c != 255 && p && p > nrStdioBuffer::begin(in->file) && p[-1] == static_cast<char>(c)) {
      --p;
      return;
    }
    in->cur = p;
    in->unget(static_cast<char>(c));
    reload();
  }

 private:
  int refill() {
    in->cur = p;
    int c = in->nextCharSlow();
    reload();
    return c;
  }
  void reload() {
    p = in->cur;
    e = in->lim;
  }

  vlInput* in;
  const char* p;
  const char* e;
};

vlInput::vlInput() : file(nullptr), cur(nullptr), lim(nullptr), definitions(251) { setFilePointer(stdin); }

// A window that no longer matches the stream (the caller used the stream in
// between) is dropped.
inline void vlInput::validateWindow() {
  if (cur && (cur != nrStdioBuffer::position(file) || lim != nrStdioBuffer::end(file))) cur = lim = nullptr;
}

inline void vlInput::syncWindow() {
  if (cur) nrStdioBuffer::setPosition(file, cur);
}

void vlInput::closeWindow() {
  syncWindow();
  cur = lim = nullptr;
}

// Every public call leaves the stream in step with the window, so a window can
// be dropped without touching the stream (which the caller may have closed).
void vlInput::setFilePointer(FILE* fp) {
  cur = lim = nullptr;
  file = fp;
  line = 1;
  version = 2.0f;
  headerChecked = 0;
  headerOk = 1;
  pushback.makeEmpty();
  pushbackIndex = -1;
}

float vlInput::getVersion() {
  if (!headerChecked) checkHeader();
  return version;
}

float vlInput::isASCIIHeader(const char*) {
  // The words after '#' are not examined: a first line that starts with '#'
  // is accepted whatever it announces.
  return 1.0f;
}

void vlInput::checkHeader() {
  headerChecked = 1;
  float v = 0;
  int c = file ? getc_unlocked(file) : EOF;
  if (c == '#') {
    char text[MAX_HEADER + 1];
    int n = 0;
    while (n < MAX_HEADER && (c = getc_unlocked(file)) != EOF) {
      if (c == '\n') {
        ++line;
        break;
      }
      text[n++] = static_cast<char>(c);
    }
    text[n] = '\0';
    if (char* cr = strchr(text, '\r')) *cr = '\0';
    v = isASCIIHeader(text);
  } else if (c != EOF) {
    ungetc(c, file);
  }
  if (v == 0) {
    vlReadError::post(this, "File does not have a valid header string");
    headerOk = 0;
  } else {
    version = v;
  }
}

int vlInput::nextCharSlow() {
  if (pushbackIndex >= 0) {
    char c = pushback.getString()[pushbackIndex];
    if (c != '\0') {
      ++pushbackIndex;
      return static_cast<unsigned char>(c);
    }
    pushback.makeEmpty();
    pushbackIndex = -1;
  }
  if (!headerChecked) checkHeader();
  if (!headerOk || !file) return EOF;
  closeWindow();
  int c = getc_unlocked(file);
  if (c != EOF && nrStdioBuffer::available) {
    cur = nrStdioBuffer::position(file);
    lim = nrStdioBuffer::end(file);
  }
  return c;
}

unsigned char vlInput::get(char& c) {
  Scan scan(this);
  int ch = scan.next();
  c = static_cast<char>(ch);
  return ch != EOF;
}

void vlInput::putBack(char c) {
  validateWindow();
  unget(c);
  syncWindow();
}

void vlInput::unget(char c) {
  if (c == static_cast<char>(255)) return;
  if (pushbackIndex > 0) {
    --pushbackIndex;
  } else if (cur && cur > nrStdioBuffer::begin(file) && cur[-1] == c) {
    // The character still stands before the read position, as ungetc would
    // find it.
    --cur;
  } else if (file) {
    closeWindow();
    ungetc(static_cast<unsigned char>(c), file);
  }
}

void vlInput::putBack(const char* text) {
  cur = lim = nullptr;
  pushback = text;
  pushbackIndex = text ? 0 : -1;
}

inline int vlInput::firstTokenChar(Scan& scan) {
  for (;;) {
    int c = scan.next();
    if (c == '\n') {
      ++line;
    } else if (c == '#') {
      do c = scan.next();
      while (c != '\n' && c != EOF);
      if (c == EOF) {
        vlReadError::post(this, "EOF reached before end of comment");
        return EOF;
      }
      ++line;
    } else if (!is(c, SPACE)) {
      return c;
    }
  }
}

void vlInput::skipWhiteSpace() {
  Scan scan(this);
  scan.back(firstTokenChar(scan));
}

unsigned char vlInput::peek(char& c) {
  Scan scan(this);
  int ch = firstTokenChar(scan);
  scan.back(ch);
  c = static_cast<char>(ch);
  return ch != EOF;
}

unsigned char vlInput::read(char& c) {
  Scan scan(this);
  int ch = firstTokenChar(scan);
  c = static_cast<char>(ch);
  return ch != EOF;
}

void vlInput::getLocationString(nrString& s) const {
  char text[32];
  snprintf(text, sizeof text, "\tOccurred at line %3d", line);
  s = text;
}

// ---- character classes ----

bool vlInput::isIdentChar(char c) { return classes.bits[static_cast<unsigned char>(c)] & IDENT; }

bool vlInput::isIdentStartChar(char c) { return isIdentChar(c) && !(classes.bits[static_cast<unsigned char>(c)] & DIGIT); }

bool vlInput::isNodeNameStartChar(char c) { return isIdentStartChar(c); }

bool vlInput::isNodeNameChar(char c) { return classes.bits[static_cast<unsigned char>(c)] & NODE_NAME; }

// ---- strings and names ----

inline bool vlInput::readStringToken(nrString& s) {
  Scan scan(this);
  int c = firstTokenChar(scan);
  if (c == EOF) return false;
  char chunk[CHUNK + 1];
  int n = 0;
  // The full chunks of a long string, joined as they come and copied into s
  // once at its end: appending each chunk to s would copy the string so far
  // every time, which takes minutes on strings of some megabytes.
  std::string gathered;
  auto add = [&](int ch) {
    chunk[n++] = static_cast<char>(ch);
    if (n == CHUNK) {
      chunk[n] = '\0';
      gathered += chunk;
      n = 0;
    }
  };
  if (c == '"') {
    c = scan.next();
    while (c != EOF && c != '"') {
      if (c == '\\') {
        c = scan.next();
        if (c == '"') {
          add('"');
          c = scan.next();
          continue;
        }
        // Any other escape keeps its backslash; the next character counts as
        // it would without one.
        add('\\');
        continue;
      }
      if (c == '\n') ++line;
      add(c);
      c = scan.next();
    }
  } else {
    while (c != EOF && !is(c, SPACE)) {
      add(c);
      c = scan.next();
    }
    scan.back(c);
  }
  chunk[n] = '\0';
  if (gathered.empty()) {
    s = chunk;
  } else {
    gathered += chunk;
    s = gathered.c_str();
  }
  return true;
}

unsigned char vlInput::read(nrString& s) { return readStringToken(s); }

unsigned char vlInput::read(nrName& name, unsigned char identifier) {
  if (!identifier) {
    nrString s;
    if (!readStringToken(s)) return 0;
    name = s.getString();
    return 1;
  }
  Scan scan(this);
  int c = firstTokenChar(scan);
  if (c == EOF) return 0;
  char text[MAX_IDENT + 1];
  int n = 0;
  if (is(c, IDENT) && !is(c, DIGIT)) {
    do {
      if (n < MAX_IDENT) text[n++] = static_cast<char>(c);
      c = scan.next();
    } while (is(c, IDENT));
  }
  scan.back(c);
  text[n] = '\0';
  name = text;
  return 1;
}

// ---- numbers ----

inline unsigned char vlInput::readInteger(bool allowSign, bool& negative, unsigned long long& magnitude, bool& overflow) {
  Scan scan(this);
  int c = firstTokenChar(scan);
  negative = false;
  if (allowSign && (c == '-' || c == '+')) {
    negative = c == '-';
    c = scan.next();
  }
  if (!is(c, DIGIT)) {
    scan.back(c);
    return 0;
  }
  unsigned long long m = 0;
  bool over = false;
  auto accumulate = [&](unsigned base, unsigned digit) {
    if (m > (ULLONG_MAX - digit) / base) over = true;
    m = m * base + digit;
  };
  if (c == '0') {
    c = scan.next();
    if (c == 'x') {
      c = scan.next();
      if (!is(c, XDIGIT)) {
        scan.back(c);
        return 0;
      }
      do {
        accumulate(16, c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
        c = scan.next();
      } while (is(c, XDIGIT));
    } else {
      // Digits after a leading 0 are octal; the conversion ends at an 8 or a
      // 9, which is still taken as part of the number's text.
      bool octal = true;
      for (; is(c, DIGIT); c = scan.next()) {
        if (c >= '8') octal = false;
        if (octal) accumulate(8, c - '0');
      }
    }
  } else {
    do {
      accumulate(10, c - '0');
      c = scan.next();
    } while (is(c, DIGIT));
  }
  scan.back(c);
  magnitude = m;
  overflow = over;
  return 1;
}

// Values out of range saturate at the limits of the type read, as the C
// library's conversions do for their own widths.
inline unsigned char vlInput::readSigned(long long low, long long high, long long& v) {
  bool negative, overflow;
  unsigned long long m;
  if (!readInteger(true, negative, m, overflow)) return 0;
  if (negative)
    v = overflow || m > static_cast<unsigned long long>(high) + 1 ? low : static_cast<long long>(0 - m);
  else
    v = overflow || m > static_cast<unsigned long long>(high) ? high : static_cast<long long>(m);
  return 1;
}

inline unsigned char vlInput::readUnsigned(unsigned long long high, unsigned long long& v) {
  bool negative, overflow;
  unsigned long long m;
  if (!readInteger(false, negative, m, overflow)) return 0;
  v = overflow || m > high ? high : m;
  return 1;
}

unsigned char vlInput::read(int& v) {
  long long x;
  if (!readSigned(INT_MIN, INT_MAX, x)) return 0;
  v = static_cast<int>(x);
  return 1;
}

unsigned char vlInput::read(long& v) {
  long long x;
  if (!readSigned(LONG_MIN, LONG_MAX, x)) return 0;
  v = static_cast<long>(x);
  return 1;
}

unsigned char vlInput::read(short& v) {
  int x;
  if (!read(x)) return 0;
  v = static_cast<short>(x & 0xFFFF);
  return 1;
}

unsigned char vlInput::read(unsigned int& v) {
  unsigned long long x;
  if (!readUnsigned(UINT_MAX, x)) return 0;
  v = static_cast<unsigned int>(x);
  return 1;
}

unsigned char vlInput::read(unsigned long& v) {
  unsigned long long x;
  if (!readUnsigned(ULONG_MAX, x)) return 0;
  v = static_cast<unsigned long>(x);
  return 1;
}

unsigned char vlInput::read(unsigned short& v) {
  unsigned int x;
  if (!read(x)) return 0;
  v = static_cast<unsigned short>(x & 0xFFFF);
  return 1;
}

inline unsigned char vlInput::readReal(double& v) {
  Scan scan(this);
  int c = firstTokenChar(scan);
  bool negative = c == '-';
  if (c == '-' || c == '+') c = scan.next();

  // The words the library's text output writes for values that are not
  // finite, so that such values read back.
  if (c == 'i' || c == 'n') {
    const char* word = c == 'i' ? "inf" : "nan";
    for (int i = 1; word[i]; ++i)
      if ((c = scan.next()) != word[i]) {
        // Not the word: the letters taken go back too, so that the input is
        // left unread from the first of them on.
        scan.back(c);
        while (i-- > 0) scan.back(word[i]);
        return 0;
      }
    double d = word[0] == 'i' ? HUGE_VAL : NAN;
    v = negative ? -d : d;
    return 1;
  }

  // The value is digits x 10^exponent; each digit after the point lowers the
  // exponent.
  unsigned long long mantissa = 0;
  int digits = 0, exponent = 0;
  bool seen = false;
  for (; is(c, DIGIT); c = scan.next()) {
    addDigit(c, mantissa, digits, moreDigits);
    seen = true;
  }
  if (c == '.') {
    for (c = scan.next(); is(c, DIGIT); c = scan.next()) {
      addDigit(c, mantissa, digits, moreDigits);
      seen = true;
      --exponent;
    }
  }
  if (!seen) {
    scan.back(c);
    return 0;
  }
  if (c == 'e' || c == 'E') {
    c = scan.next();
    bool expNegative = c == '-';
    if (c == '-' || c == '+') c = scan.next();
    if (!is(c, DIGIT)) {
      scan.back(c);
      return 0;
    }
    int e = 0;
    do {
      if (e < 100000) e = e * 10 + (c - '0');
      c = scan.next();
    } while (is(c, DIGIT));
    exponent += expNegative ? -e : e;
  }
  scan.back(c);

  // A mantissa and a power of ten that a double holds exactly give the
  // correctly rounded value in one operation; other numbers take the C
  // library's conversion of the same decimal value.
  double d;
  if (mantissa == 0) {
    d = 0;
  } else if (digits <= MAX_MANTISSA_DIGITS && mantissa <= MAX_EXACT_MANTISSA && exponent >= -MAX_EXACT_POWER &&
             exponent <= MAX_EXACT_POWER) {
    d = static_cast<double>(mantissa);
    d = exponent < 0 ? d / exactPowers[-exponent] : d * exactPowers[exponent];
  } else {
    if (digits <= MAX_MANTISSA_DIGITS) moreDigits.clear();
    char head[24], tail[16];
    snprintf(head, sizeof head, "%llu", mantissa);
    snprintf(tail, sizeof tail, "e%d", exponent);
    moreDigits.insert(0, head);
    moreDigits += tail;
    d = atof(moreDigits.c_str());
  }
  v = negative ? -d : d;
  return 1;
}

unsigned char vlInput::read(double& v) { return readReal(v); }

unsigned char vlInput::read(float& v) {
  double d;
  if (!readReal(d)) return 0;
  v = static_cast<float>(d);
  return 1;
}

namespace {

inline bool isDigit(const char* p) { return static_cast<unsigned char>(*p - '0') <= 9; }

// After a number: white space or the end of its list or element.
inline bool endsNumber(char c) { return is(static_cast<unsigned char>(c), SPACE) || c == ',' || c == ']'; }

// An integer in plain decimal form at p (before e), or null when the text
// there has another form or may go on past e.
const char* plainInteger(const char* p, const char* e, int& v) {
  bool negative = *p == '-';
  if (negative) ++p;
  const char* first = p;
  int m = 0;
  while (p < e && isDigit(p) && p - first < 9) m = m * 10 + (*p++ - '0');
  // No digit, more digits than an int surely holds, or a leading 0 that
  // starts an octal or hexadecimal form.
  if (p == first || p >= e || isDigit(p) || (*first == '0' && p - first > 1)) return nullptr;
  if (*p == 'x' || !endsNumber(*p)) return nullptr;
  v = negative ? -m : m;
  return p;
}

// A real in plain form at p (before e), converted exactly as readReal does
// through its one-operation path, or null.
const char* plainReal(const char* p, const char* e, float& v) {
  bool negative = *p == '-';
  if (negative) ++p;
  unsigned long long mantissa = 0;
  int digits = 0, exponent = 0;
  bool seen = false;
  for (; p < e && isDigit(p); ++p, seen = true)
    if (mantissa || *p != '0') {
      ++digits;
      mantissa = mantissa * 10 + (*p - '0');
    }
  if (p < e && *p == '.')
    for (++p; p < e && isDigit(p); ++p, --exponent, seen = true)
      if (mantissa || *p != '0') {
        ++digits;
        mantissa = mantissa * 10 + (*p - '0');
      }
  if (!seen || digits > 15 || exponent < -MAX_EXACT_POWER || p >= e || !endsNumber(*p)) return nullptr;
  double d = mantissa ? static_cast<double>(mantissa) / exactPowers[-exponent] : 0;
  v = static_cast<float>(negative ? -d : d);
  return p;
}

}  // namespace

template <typename T, typename Parse>
unsigned vlInput::readRun(T* out, unsigned max, unsigned group, Parse parse) {
  validateWindow();
  if (!out || !cur || pushbackIndex >= 0) return 0;
  const char* p = cur;
  const char* e = lim;
  int lines = 0;
  auto skipSpace = [&](const char*& q, int& l) {
    for (; q < e && is(static_cast<unsigned char>(*q), SPACE); ++q)
      if (*q == '\n') ++l;
  };
  skipSpace(p, lines);
  unsigned n = 0;
  T element[MAX_RUN_GROUP];
  while (n + group <= max) {
    const char* q = p;
    int l = 0;
    unsigned k = 0;
    for (; k < group; ++k) {
      if (k) skipSpace(q, l);
      if (q >= e || !(q = parse(q, e, element[k]))) break;
    }
    if (k < group) break;
    // Whether a comma follows is known only before the end of the buffer.
    skipSpace(q, l);
    if (q >= e) break;
    std::copy(element, element + group, out + n);
    if (*q == ',') {
      ++q;
      skipSpace(q, l);
    }
    n += group;
    p = q;
    lines += l;
  }
  cur = p;
  line += lines;
  syncWindow();
  return n;
}

unsigned vlInput::readIntRun(int* out, unsigned max) { return readRun(out, max, 1, plainInteger); }

unsigned vlInput::readFloatRun(float* out, unsigned max, unsigned group) {
  return group && group <= MAX_RUN_GROUP ? readRun(out, max, group, plainReal) : 0;
}

unsigned char vlInput::readBool(unsigned char& b) {
  int i;
  if (read(i)) {
    if (i != 0 && i != 1) {
      vlReadError::post(this, "Illegal value for vlSFBool: %d (must be 0 or 1)", static_cast<unsigned char>(i));
      return 0;
    }
    b = static_cast<unsigned char>(i);
    return 1;
  }
  nrName word;
  if (!read(word, 1)) return 0;
  if (!strcmp(word.getString(), "TRUE")) {
    b = 1;
  } else if (!strcmp(word.getString(), "FALSE")) {
    b = 0;
  } else {
    // The phrase stands where the word read would: long-standing wording.
    vlReadError::post(this, "Unknown value (\"%s\") for vlSFBool", "(must be TRUE or FALSE)");
    return 0;
  }
  return 1;
}

// ---- DEF names ----

// A null container leaves the name defined as nothing.
void vlInput::addReference(const nrName& name, nrContainer* container) {
  if (container) container->setName(name.getString());
  definitions.enter(reinterpret_cast<unsigned long>(name.getEntry()), container);
}

nrContainer* vlInput::findReference(const nrName& name) const {
  void* value;
  definitions.find(reinterpret_cast<unsigned long>(name.getEntry()), value);
  return static_cast<nrContainer*>(value);
}
