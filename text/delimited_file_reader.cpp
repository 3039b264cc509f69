// The delimited file reader: delimiter guess, measuring pass and filling pass.
#include "text/delimited_file_reader.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "base/text_encoding.hpp"

namespace lf {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Length of the UTF-8 character that starts at `i` (the text is valid UTF-8).
size_t characterLength(std::string_view text, size_t i) {
  const auto lead = static_cast<unsigned char>(text[i]);
  size_t n = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  return std::min(n, text.size() - i);
}

// A delimiter or qualifier is compared with one character of input at a time: a text of
// more than one character never matches (intended), nor does an empty one.
std::string_view singleCharacter(std::string_view text) {
  if (text.empty() || characterLength(text, 0) != text.size()) return {};
  return text;
}

bool startsAt(std::string_view line, size_t i, std::string_view what) {
  if (what.size() == 1) return i < line.size() && line[i] == what[0];
  return !what.empty() && line.size() - i >= what.size() &&
         std::memcmp(line.data() + i, what.data(), what.size()) == 0;
}

// How many times each of three bytes occurs in the text, sixteen bytes at a time where the
// processor has the vector instructions, then eight, then one.
std::array<long, 3> countBytes(std::string_view text, std::array<char, 3> bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  constexpr std::uint64_t kLows = 0x7F7F7F7F7F7F7F7FULL;
  std::array<long, 3> counts{};
  size_t i = 0;
#if defined(__SSE2__)
  const __m128i wanted[3] = {_mm_set1_epi8(bytes[0]), _mm_set1_epi8(bytes[1]),
                             _mm_set1_epi8(bytes[2])};
  const __m128i zero = _mm_setzero_si128();
  while (text.size() - i >= 16) {
    // A match compares as -1 in its byte lane; 255 blocks at most before a lane could wrap.
    __m128i sums[3] = {zero, zero, zero};
    const size_t blocks = std::min<size_t>((text.size() - i) / 16, 255);
    for (size_t b = 0; b < blocks; ++b, i += 16) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
      for (size_t k = 0; k < 3; ++k) sums[k] = _mm_sub_epi8(sums[k], _mm_cmpeq_epi8(v, wanted[k]));
    }
    for (size_t k = 0; k < 3; ++k) {
      const __m128i total = _mm_sad_epu8(sums[k], zero);  // two partial sums, one per half
      counts[k] += static_cast<long>(_mm_cvtsi128_si64(total) +
                                     _mm_cvtsi128_si64(_mm_unpackhi_epi64(total, total)));
    }
  }
#endif
  for (; text.size() - i >= 8; i += 8) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + i, 8);
    for (size_t k = 0; k < 3; ++k) {
      // A byte of x is zero where the word holds bytes[k]; its high bit is set in `zero`.
      const std::uint64_t x = word ^ (kOnes * static_cast<unsigned char>(bytes[k]));
      const std::uint64_t zero = ~(((x & kLows) + kLows) | x | kLows);
      // One bit at the top of each matching byte: summed into the top byte by a multiply.
      counts[k] += static_cast<long>(((zero >> 7) * kOnes) >> 56);
    }
  }
  for (; i < text.size(); ++i)
    for (size_t k = 0; k < 3; ++k) counts[k] += text[i] == bytes[k];
  return counts;
}

// Position of the next delimiter from i, or the line's end.
size_t nextDelimiter(std::string_view line, size_t i, std::string_view delimiter) {
  if (delimiter.empty()) return line.size();
  if (delimiter.size() == 1) {
    const size_t at = line.find(delimiter[0], i);
    return at == std::string_view::npos ? line.size() : at;
  }
  const size_t at = line.find(delimiter, i);
  return at == std::string_view::npos ? line.size() : at;
}

// Position of the next delimiter or carriage return from i, or the line's end (a line holds
// no line feed).
size_t nextFieldEnd(std::string_view line, size_t i, std::string_view delimiter) {
  const size_t len = line.size();
  if (delimiter.size() == 1) {
    // Fields are short: sixteen bytes compared at once, or a plain loop, beat a search call
    // per field.
    const char d = delimiter[0];
    const char* p = line.data();
#if defined(__SSE2__)
    const __m128i wantedD = _mm_set1_epi8(d), wantedCR = _mm_set1_epi8('\r');
    for (; len - i >= 16; i += 16) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
      const int hits =
          _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, wantedD), _mm_cmpeq_epi8(v, wantedCR)));
      if (hits != 0) return i + __builtin_ctz(static_cast<unsigned>(hits));
    }
#endif
    while (i < len && p[i] != d && p[i] != '\r') ++i;
    return i;
  }
  if (i >= len) return len;
  const size_t stop = delimiter.empty() ? len : std::min(len, line.find(delimiter, i));
  const void* cr = std::memchr(line.data() + i, '\r', stop - i);
  return cr == nullptr ? stop : static_cast<const char*>(cr) - line.data();
}

// The plain start of a line: the fields before the first qualifier or carriage return, which
// split at every delimiter. `resume` is where the full rules go on (the start of the field that
// holds that character, or the line's end) and `fields` how many fields lie before it; a
// delimiter that is the line's last character opens no field.
struct PlainPrefix {
  size_t resume = 0;
  long fields = 0;
};

PlainPrefix plainPrefix(std::string_view line, char delimiter, std::string_view qualifier) {
  const char q = qualifier.empty() ? '\r' : qualifier[0];
  const size_t len = line.size();
  long delimiters = 0;
  size_t afterLastDelimiter = 0;
  size_t i = 0;
#if defined(__SSE2__)
  const __m128i wantedD = _mm_set1_epi8(delimiter), wantedQ = _mm_set1_epi8(q);
  const __m128i wantedCR = _mm_set1_epi8('\r');
  for (; len - i >= 16; i += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(line.data() + i));
    const unsigned special = static_cast<unsigned>(
        _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, wantedQ), _mm_cmpeq_epi8(v, wantedCR))));
    unsigned delimiterBits = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(v, wantedD)));
    if (special != 0) delimiterBits &= (1u << __builtin_ctz(special)) - 1;  // those before it
    if (delimiterBits != 0) {
      delimiters += __builtin_popcount(delimiterBits);
      afterLastDelimiter = i + (31 - __builtin_clz(delimiterBits)) + 1;
    }
    if (special != 0) return {afterLastDelimiter, delimiters};
  }
#endif
  for (; i < len; ++i) {
    const char c = line[i];
    if (c == '\r' || c == q) return {afterLastDelimiter, delimiters};
    if (c == delimiter) {
      ++delimiters;
      afterLastDelimiter = i + 1;
    }
  }
  return {len, delimiters + (len > 0 && line.back() != delimiter ? 1 : 0)};
}

// The text without the blanks at either end.
std::string_view trimmed(std::string_view text) {
  size_t b = 0, e = text.size();
  while (b < e && text[b] == ' ') ++b;
  while (e > b && text[e - 1] == ' ') --e;
  return text.substr(b, e - b);
}

// Calls f(line) for each line of the text; a line ends at LF or CR LF, and a final line
// ending adds no empty line.
template <class F>
void forEachLine(std::string_view text, F&& f) {
  size_t start = 0;
  while (start < text.size()) {
    const void* hit = std::memchr(text.data() + start, '\n', text.size() - start);
    const size_t end = hit == nullptr ? text.size() : static_cast<const char*>(hit) - text.data();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    f(line);
    start = end + 1;
  }
}

}  // namespace

DelimitedFileReader::DelimitedFileReader(std::string className)
    : className_(std::move(className)) {}

std::string DelimitedFileReader::label(const char* procedureName) const {
  return "Ledgerfolio.exe-" + className_ + "-" + procedureName;
}

std::string DelimitedFileReader::readFileText(const std::string& path) {
  std::error_code error;
  if (path.empty() || !std::filesystem::is_regular_file(path, error)) return {};
  std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
  if (!file) throw Failure("Cannot open the file " + path + ": " + std::strerror(errno), 53);
  const auto size = std::filesystem::file_size(path, error);
  if (!error && size > kMaxFileBytes) throw Failure(tooLargeMessage(path), 7);
  // Read straight into the text, in steps, to the end of the file as it is then.
  std::string text;
  size_t filled = 0;
  text.resize(static_cast<size_t>(error ? 0 : size) + 1);
  for (;;) {
    if (filled == text.size()) text.resize(filled + (size_t{1} << 16));
    const size_t n = std::fread(text.data() + filled, 1, text.size() - filled, file.get());
    filled += n;
    // A file that grows while it is read is held to the same limit.
    if (filled > kMaxFileBytes) throw Failure(tooLargeMessage(path), 7);
    if (n == 0) break;
  }
  text.resize(filled);
  if (std::ferror(file.get())) throw Failure("Cannot read the file " + path, 57);
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  makeCleanText(text);
  return text;
}

std::string DelimitedFileReader::tooLargeMessage(const std::string& path) {
  return "the client file " + path + " is larger than " + std::to_string(kMaxFileBytes >> 20) +
         " MB, the most a client file may hold";
}

const std::string& DelimitedFileReader::fileText() {
  // The decoded text is kept from the delimiter guess (or the measuring pass) through the
  // filling pass, as long as the file is the same one, unchanged (same size and modification
  // time).
  std::error_code error;
  FileStamp stamp{fileLocation, 0, {}};
  stamp.size = std::filesystem::file_size(fileLocation, error);
  if (!error) stamp.written = std::filesystem::last_write_time(fileLocation, error);
  if (error) stamp = FileStamp{};
  if (!textHeld_ || error || !(stamp == textStamp_)) {
    textHeld_ = false;
    text_ = std::string();
    text_ = readFileText(fileLocation);
    textStamp_ = stamp;
    textHeld_ = !error;
  }
  return text_;
}

void DelimitedFileReader::releaseText() {
  textHeld_ = false;
  text_ = std::string();
}

void DelimitedFileReader::determineDelimiter(std::string& foundDelimiter) {
  const std::string labelText = label("determineDelimiter");
  procedure(labelText, [&] {
    releaseText();  // the guess starts a reading of the file: it reads it afresh
    const std::string& text = fileText();
    // Line ends hold none of the three, so counting the whole text counts every line.
    const auto [commas, tabs, semicolons] = countBytes(text, {',', '\t', ';'});
    if (commas > tabs && commas > semicolons)
      strDelimiter = ",";
    else if (tabs > commas && tabs > semicolons)
      strDelimiter = "\t";
    else if (semicolons > tabs && semicolons > commas)
      strDelimiter = ";";
    else
      strDelimiter = ",";
  });
  foundDelimiter = strDelimiter;
}

void DelimitedFileReader::setupFlexGrid() {
  const std::string labelText = label("setupFlexGrid");
  procedure(labelText, [&] {
    if (gridControl == nullptr) return;
    gridControl->clear();
    countOnly = true;
    long maxColumns = 0;
    populateData(maxColumns);
    ImportGrid& grid = *gridControl;
    grid.resize(kFirstDataRow + 1, static_cast<int>(maxColumns) + 1);
    for (int col = 1; col < grid.cols(); ++col) {
      grid.setTextMatrix(kCaptionRow, col, "Column " + std::to_string(col));
      grid.setTextMatrix(kAssignmentRow, col, std::string(kNotAssigned));
    }
  });
}

void DelimitedFileReader::loadGrid() {
  setupFlexGrid();
  countOnly = false;
  long columns = 0;
  populateData(columns);
  countOnly = true;
  if (gridControl != nullptr) gridControl->selectAllRows(true);
}

void DelimitedFileReader::getEnclosedString(bool& closed, std::string& field, std::string_view line,
                                            size_t& position, std::string_view qualifier) {
  closed = false;
  if (startsAt(line, position, qualifier)) {
    closed = true;
    field.clear();
  } else {
    const size_t at = qualifier.empty() || position >= line.size() ? std::string_view::npos
                                                                   : line.find(qualifier, position);
    const size_t stop = at == std::string_view::npos ? line.size() : at;
    if (position < stop) field.append(line.substr(position, stop - position));
    position = stop;
    closed = at != std::string_view::npos;
  }
  if (closed) position += qualifier.size();  // past the closing qualifier
}

void DelimitedFileReader::populateData(long& columnCount) {
  columnCount = 0;
  const std::string labelText = label("populateData");
  procedure(labelText, [&] {
    ImportGrid* grid = countOnly ? nullptr : gridControl;
    // The filling pass hands the text to the grid, whose cells are places in it.
    const std::string_view text =
        grid != nullptr ? grid->holdText(takeFileText()) : std::string_view(fileText());
    const std::string_view delimiter = singleCharacter(strDelimiter);
    const std::string_view qualifier = singleCharacter(strTextQualifier);
    // One ASCII byte as delimiter and at most one byte as qualifier: lines can be measured
    // by counting.
    const bool plainDelimiter = delimiter.size() == 1 &&
                                static_cast<unsigned char>(delimiter[0]) < 0x80 &&
                                qualifier.size() <= 1;
    if (grid != nullptr) grid->reserveRows(static_cast<int>(measuredLines_) + kFirstDataRow + 1);
    bool closed = true;
    long lines = 0;
    long column = 0;
    long maxColumns = 0;
    std::string field;

    // An unquoted field stays a place in the text; a quoted or recased one is copied.
    auto store = [&](std::string_view value, bool inText) {
      const bool captionLine = firstRowFieldNames && lines == 0;
      const int row = static_cast<int>(captionLine          ? kCaptionRow
                                       : firstRowFieldNames ? lines + 1
                                                            : lines + 2);
      if (checkRemoveCaps)
        grid->setTextMatrix(row, static_cast<int>(column), GeneralUtilities::mixedCase(value));
      else if (inText)
        grid->setTextView(row, static_cast<int>(column), value);
      else
        grid->setTextMatrix(row, static_cast<int>(column), value);
    };

    forEachLine(text, [&](std::string_view line) {
      if (closed && grid != nullptr && (firstRowFieldNames ? lines > 1 : lines >= 1))
        grid->addRow();  // the first data row exists from the start
      const size_t len = line.size();
      size_t i = 0;
      if (closed) column = 0;
      // Measuring: the plain start of a line needs only its delimiters counted.
      if (grid == nullptr && closed && plainDelimiter) {
        const PlainPrefix prefix = plainPrefix(line, delimiter[0], qualifier);
        if (eventPump)
          for (long n = 0; n < prefix.fields; ++n) eventPump();
        column = prefix.fields;
        i = prefix.resume;
      }
      while (i < len) {
        // An unquoted field is taken from the line as it stands; a quoted one is gathered in
        // `field`, which goes on over line ends.
        std::string_view plain;
        bool quoted = true;
        if (!closed) {
          // A quoted field goes on from the line before.
          if (startsAt(line, i, qualifier)) {
            closed = true;
            i += qualifier.size();
          } else {
            field += "\r\n";
            getEnclosedString(closed, field, line, i, qualifier);
          }
          if (i < len) i += characterLength(line, i);  // over the delimiter
        } else if (line[i] != '\r') {
          ++column;
          if (startsAt(line, i, qualifier)) {
            field.clear();
            i += qualifier.size();
            getEnclosedString(closed, field, line, i, qualifier);
            if (closed) {
              // What follows the closing qualifier is kept as it stands: no escape (intended).
              const size_t stop = nextDelimiter(line, i, delimiter);
              field.append(line.substr(i, stop - i));
              i = stop;
            }
          } else {
            const size_t stop = nextFieldEnd(line, i, delimiter);
            plain = line.substr(i, stop - i);
            quoted = false;
            i = stop;
          }
          if (i < len) i += characterLength(line, i);  // past the delimiter
        } else {
          ++i;  // a stray carriage return is dropped
          continue;
        }
        if (closed && grid != nullptr)
          store(trimmed(quoted ? std::string_view(field) : plain), !quoted);
        if (eventPump) eventPump();
      }
      if (closed) {
        ++lines;
        maxColumns = std::max(maxColumns, column);
      }
    });
    // The fields before a quoted field left open at the end are kept, the open one dropped:
    // the grid must be wide enough for them.
    if (!closed) maxColumns = std::max(maxColumns, column - 1);
    columnCount = maxColumns;
    if (countOnly) measuredLines_ = lines;
  });
  // The filling pass is the last to need the text.
  if (!countOnly) releaseText();
}

std::string DelimitedFileReader::takeFileText() {
  fileText();
  std::string text = std::move(text_);
  releaseText();
  return text;
}

}  // namespace lf
