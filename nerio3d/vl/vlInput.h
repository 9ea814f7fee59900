// Character source and tokenizer of the scene-file reader: checks the header
// line, skips white space and comments while counting lines, reads the value
// tokens of the file syntax and keeps the DEF names of one file.
#pragma once

#include <cstdio>
#include <string>

#include "nerio3d/core/nrDict.h"
#include "nerio3d/core/nrName.h"
#include "nerio3d/core/nrString.h"

class nrContainer;

class vlInput {
 public:
  vlInput();
  vlInput(const vlInput&) = delete;
  vlInput& operator=(const vlInput&) = delete;

  // Starts over on fp: version 2.0, line 1, header unchecked, nothing pushed
  // back. The DEF names read so far are kept.
  void setFilePointer(FILE* fp);
  FILE* getFilePointer() const { return file; }
  // The header's version, checking the header first if no read has yet.
  float getVersion();
  // 0 once the header check has failed.
  unsigned char isHeaderOk() const { return headerOk; }
  int getLineNumber() const { return line; }

  // Every read returns 1 on success and 0 on failure, leaving the input unread
  // from the character that failed on.

  // One raw character, without skipping; at the end of input c becomes 255.
  unsigned char get(char& c);
  // The next character after white space and comments.
  unsigned char read(char& c);
  // A double-quoted string (with \" for a quote) or text up to white space.
  unsigned char read(nrString& s);
  // An identifier token when identifier is set, else a string token. A
  // character that cannot start an identifier gives the empty name.
  unsigned char read(nrName& n, unsigned char identifier);
  // Integers in decimal, octal (a leading 0) or hexadecimal (a leading 0x).
  unsigned char read(int& v);
  unsigned char read(long& v);
  unsigned char read(short& v);
  unsigned char read(unsigned int& v);
  unsigned char read(unsigned long& v);
  unsigned char read(unsigned short& v);
  unsigned char read(float& v);
  unsigned char read(double& v);
  // TRUE, FALSE, 1 or 0.
  unsigned char readBool(unsigned char& b);
  // Fast paths for long lists of numbers. From the start of a list element,
  // read whole elements of group numbers each, written in the plain form
  // most files use (decimal digits after an optional '-'; for reals one '.'
  // and at most 15 significant digits), separated by white space, each
  // element followed by at most one comma, into out until max numbers are
  // stored. They stop at the start of the first element in any other form
  // (a comment, a sign '+', an exponent, octal or hexadecimal digits, ']',
  // the end of the buffered text), which the general reads above then take,
  // and return the count of numbers stored: values and line numbers are what
  // those reads give.
  unsigned readIntRun(int* out, unsigned max);
  unsigned readFloatRun(float* out, unsigned max, unsigned group);
  // Skips white space and comments, counting lines.
  void skipWhiteSpace();
  // The next character after white space and comments, left unread.
  unsigned char peek(char& c);

  // The stream's end-of-file flag; a null stream is an empty one.
  unsigned char eof() const { return !file || feof(file); }
  // Gives back c (255 is ignored): to the pushed-back text while that is being
  // read, otherwise to the stream.
  void putBack(char c);
  // Makes text the next input, read from its start before the stream.
  void putBack(const char* text);

  // "\tOccurred at line %3d" with the current line.
  void getLocationString(nrString& s) const;

  // Names container (a copy of name) and enters it under name, replacing an
  // earlier definition. The table holds no reference: the scene does.
  void addReference(const nrName& name, nrContainer* container);
  // The container defined under name, or null.
  nrContainer* findReference(const nrName& name) const;

  // Character classes of the C locale; bytes above 127 are node-name
  // characters but not identifier characters.
  static bool isIdentChar(char c);
  static bool isIdentStartChar(char c);
  static bool isNodeNameStartChar(char c);
  static bool isNodeNameChar(char c);
  // The version of the text after the header's #: 1.0 for any text.
  static float isASCIIHeader(const char* text);

 private:
  class Scan;

  // Next character or EOF from the pushed-back text or the stream; while
  // nothing is pushed back and the header has passed, reads go straight
  // through the stream's buffer in a window [cur, lim) that every public call
  // hands back to the stream.
  int nextCharSlow();
  void unget(char c);
  void validateWindow();
  void syncWindow();
  void closeWindow();
  void checkHeader();
  // The first character after white space and comments, or EOF.
  int firstTokenChar(Scan& scan);
  // Reads an integer's text and converts it; unsigned forms take no sign.
  unsigned char readSigned(long long low, long long high, long long& v);
  unsigned char readUnsigned(unsigned long long high, unsigned long long& v);
  unsigned char readInteger(bool allowSign, bool& negative, unsigned long long& magnitude, bool& overflow);
  unsigned char readReal(double& v);
  template <typename T, typename Parse>
  unsigned readRun(T* out, unsigned max, unsigned group, Parse parse);
  // Gathers a string token into s; false at the end of input.
  bool readStringToken(nrString& s);

  FILE* file;
  int line;
  float version;
  unsigned char headerChecked;
  unsigned char headerOk;
  const char* cur;
  const char* lim;
  nrDict definitions;
  nrString pushback;
  int pushbackIndex;
  // Digits of a real beyond what its mantissa holds (rare); reused so that
  // reading allocates nothing per token.
  std::string moreDigits;
};
