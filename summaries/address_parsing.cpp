// parseAddressString and its helpers: line breaks to blanks, the province search, up to
// three splits at the last comma, and the right-to-left strip of parseAddressStringWithSpaces.
#include "summaries/address_parsing.hpp"

#include <vector>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/procedure.hpp"

namespace lf {
namespace {

constexpr std::string_view kParseLabel = "Ledgerfolio.exe-modFormatAddresses-parseAddressString";
constexpr std::string_view kSpacesLabel =
    "Ledgerfolio.exe-modFormatAddresses-parseAddressStringWithSpaces";
constexpr std::string_view kClearLabel = "Ledgerfolio.exe-modFormatAddresses-clearAddressFields";

using Tokens = std::vector<std::string>;

std::string trim(std::string_view text) {
  return GeneralUtilities::trim(text);
}

void replaceAll(std::string& text, std::string_view what, std::string_view with) {
  std::string out;
  out.reserve(text.size());
  size_t from = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
    out.append(text, from, at - from).append(with);
    from = at + what.size();
  }
  out.append(text, from);
  text = std::move(out);
}

// The utilities' clean-up of one token: surrounding white space goes.
std::string cleanToken(std::string_view piece) {
  constexpr std::string_view kWhite = " \t\r\n\v\f";
  const size_t b = piece.find_first_not_of(kWhite);
  if (b == std::string_view::npos) return {};
  const size_t e = piece.find_last_not_of(kWhite);
  return std::string(piece.substr(b, e - b + 1));
}

// Splits at each blank, cleans each piece and drops the blank ones. Never empty: a text
// with no token gives one empty token.
Tokens tokenise(std::string_view text) {
  Tokens tokens;
  size_t from = 0;
  while (true) {
    const size_t blank = text.find(' ', from);
    std::string token = cleanToken(
        text.substr(from, blank == std::string_view::npos ? std::string_view::npos : blank - from));
    if (!GeneralUtilities::isBlank(token)) tokens.push_back(std::move(token));
    if (blank == std::string_view::npos) break;
    from = blank + 1;
  }
  if (tokens.empty()) tokens.emplace_back();
  return tokens;
}

// Token read with the legacy bounds check: below 0 or past the end is a subscript fault.
const std::string& at(const Tokens& tokens, long index) {
  if (index < 0 || index >= static_cast<long>(tokens.size())) throw SubscriptOutOfRange();
  return tokens[static_cast<size_t>(index)];
}

// Tokens first..last joined by one blank, trimmed; empty when last is below first.
std::string join(const Tokens& tokens, long first, long last) {
  std::string out;
  for (long i = first; i <= last; ++i) {
    if (i > first) out.push_back(' ');
    out += at(tokens, i);
  }
  return trim(out);
}

bool hasLength(const std::string& token, size_t length) {
  return token.size() == length;
}

// The search forms of each province entry: upper-cased, followed by a blank and by ". ".
struct ProvinceForms {
  std::string withBlank;
  std::string withFullStop;
};

const std::array<ProvinceForms, 42>& provinceForms() {
  static const std::array<ProvinceForms, 42> forms = [] {
    std::array<ProvinceForms, 42> out;
    for (size_t i = 0; i < out.size(); ++i) {
      const std::string name = GeneralUtilities::upperCase(provinceSearchNames()[i]);
      out[i] = {name + " ", name + ". "};
    }
    return out;
  }();
  return forms;
}

// The first province entry found followed by a blank (or by ". ") in the upper-cased text
// is cut out of it, and the text is left upper-cased.
void searchProvince(std::string& text, AddressFields& fields, bool& provinceFound) {
  const std::string upper = GeneralUtilities::upperCase(text);
  const auto& forms = provinceForms();
  for (size_t i = 0; i < forms.size(); ++i) {
    const std::string* form = &forms[i].withBlank;
    bool fullStop = false;
    if (upper.find(*form) == std::string::npos) {
      form = &forms[i].withFullStop;
      if (upper.find(*form) == std::string::npos) continue;
      fullStop = true;
    }
    provinceFound = true;
    fields.Province = std::string(provinceSearchNames()[i]) + (fullStop ? "." : "");
    text = upper;
    replaceAll(text, *form, "");
    return;
  }
}

// The parts after the last comma of the whole line.
void placeFirstSplit(const Tokens& t, AddressFields& f, bool& cityFound, bool& provinceFound,
                     bool& postalFound) {
  const long u = static_cast<long>(t.size()) - 1;
  auto setPostal = [&](std::string value) {
    f.PostalCode = std::move(value);
    postalFound = true;
  };
  auto setCity = [&](std::string value) {
    f.City = std::move(value);
    cityFound = true;
  };
  auto setProvince = [&](std::string value) {
    f.Province = std::move(value);
    provinceFound = true;
  };

  if (t.size() == 1) {
    if (hasLength(t[0], 6))
      setPostal(t[0]);
    else if (provinceFound)
      setCity(t[0]);
    else
      setProvince(t[0]);
  } else if (t.size() == 2) {
    if (hasLength(t[0], 3) && hasLength(t[1], 3)) {
      setPostal(t[0] + " " + t[1]);
    } else if (hasLength(t[1], 6)) {
      setPostal(t[1]);
      if (provinceFound)
        setCity(t[0]);
      else
        setProvince(t[0]);
    } else if (!provinceFound) {
      setCity(t[1]);  // only here is the last token the city
      setProvince(t[0]);
    } else {
      setCity(t[0] + " " + t[1]);
    }
  } else {
    if (hasLength(t[u - 1], 3) && hasLength(t[u], 3)) {
      setPostal(t[u - 1] + " " + t[u]);
      if (provinceFound) {
        setCity(join(t, 0, u - 2));
      } else {
        setProvince(t[u - 2]);
        setCity(join(t, 0, u - 3));
      }
    } else if (hasLength(t[u], 6)) {
      setPostal(t[u]);
      if (provinceFound) {
        setCity(join(t, 0, u - 1));
      } else {
        setProvince(t[u - 1]);
        setCity(join(t, 0, u - 2));
      }
    } else if (provinceFound) {
      setCity(join(t, 0, u));
    } else {
      setProvince(t[u]);
      setCity(join(t, 0, u - 1));
    }
  }
}

// The parts after the last comma of what the first split left in Street. With two tokens the
// city comes first here, the opposite of the first split. Intended.
void placeSecondSplit(const Tokens& t, AddressFields& f, bool& cityFound, bool& provinceFound) {
  const long u = static_cast<long>(t.size()) - 1;
  if (provinceFound) {
    f.City = join(t, 0, u);
    cityFound = true;
    return;
  }
  if (t.size() == 1) {
    f.Province = t[0];
  } else if (t.size() == 2) {
    f.City = t[0];
    f.Province = t[1];
    cityFound = true;
  } else {
    f.City = join(t, 0, u - 1);
    f.Province = t[u];
    cityFound = true;
  }
  provinceFound = true;
}

}  // namespace

const std::array<std::string_view, 42>& provinceSearchNames() {
  // clang-format off
  static constexpr std::array<std::string_view, 42> names = {
      "Alberta", "Alta", "AB",
      "BritishColumbia", "British Columbia", "B.C.", "BC",
      "Manitoba", "Man", "MB",
      "Ontario", "Ont", "ON",
      "Saskatchewan", "Sask", "SK",
      "Quebec", "Que", "QC",
      "NovaScotia", "Nova Scotia", "N.S.", "NS",
      "NewBrunswick", "New Brunswick", "N.B.", "NB",
      "Newfoundland", "Newfoundland and Labrador", "Nfld", "NL",
      "Prince Edward Island", "P.E.I.", "PEI",
      "Northwest Territories", "NWT", "NT",
      "Nunavut", "NU",
      "Yukon", "YT",
      // Left empty on purpose: it matches any blank, so a line that names no province loses
      // its blanks and is upper-cased. Imported addresses depend on this result.
      ""};
  // clang-format on
  return names;
}

void clearAddressFields(AddressFields& fields) {
  procedure(kClearLabel, [&] { fields = AddressFields{}; });
}

AddressFields parseAddressString(std::string& line) {
  AddressFields fields;
  procedure(kParseLabel, [&] {
    clearAddressFields(fields);
    bool cityFound = false, provinceFound = false, postalFound = false;
    replaceAll(line, "\r\n", " ");
    replaceAll(line, "\r", " ");
    replaceAll(line, "\n", " ");

    searchProvince(line, fields, provinceFound);

    // First split: street, then what follows the last comma.
    size_t comma = line.rfind(',');
    if (comma == std::string::npos) {
      parseAddressStringWithSpaces(line, fields, cityFound, provinceFound, postalFound);
    } else {
      fields.Street = trim(std::string_view(line).substr(0, comma));
      line.erase(0, comma + 1);
      placeFirstSplit(tokenise(line), fields, cityFound, provinceFound, postalFound);
      if (cityFound && provinceFound) return;

      // Second split: the line was street, city, province-and-postal-code, so the city is
      // still inside Street.
      line = fields.Street;
      comma = line.rfind(',');
      if (comma == std::string::npos) {
        parseAddressStringWithSpaces(line, fields, cityFound, provinceFound, postalFound);
      } else {
        fields.Street = trim(std::string_view(line).substr(0, comma));
        placeSecondSplit(tokenise(std::string_view(line).substr(comma + 1)), fields, cityFound,
                         provinceFound);
      }
    }

    // Third split: only shortens Street, keeping its comma, and closes the city as empty.
    if (!cityFound) {
      line = fields.Street;
      comma = line.rfind(',');
      if (comma == std::string::npos) {
        fields.Street = line;
      } else {
        fields.Street = trim(std::string_view(line).substr(0, comma + 1));
        fields.City.clear();
        cityFound = true;
      }
    }

    if (!cityFound || !provinceFound)
      parseAddressStringWithSpaces(line, fields, cityFound, provinceFound, postalFound);
  });
  return fields;
}

void parseAddressStringWithSpaces(const std::string& text, AddressFields& fields, bool& cityFound,
                                  bool& provinceFound, bool& postalFound) {
  procedure(kSpacesLabel, [&] {
    if (text.find(' ') == std::string::npos) {
      fields.Street = text;
      return;
    }
    const Tokens t = tokenise(text);
    const long u = static_cast<long>(t.size()) - 1;

    if (t.size() == 1) {
      if (!postalFound && hasLength(t[0], 6)) {
        fields.PostalCode = t[0];
        postalFound = true;
      } else if (!provinceFound) {
        fields.Province = t[0];
        provinceFound = true;
      } else if (!cityFound) {
        fields.City = t[0];
        cityFound = true;
      } else {
        fields.Street = t[0];
      }
      return;
    }

    if (t.size() == 2) {
      if (postalFound && !provinceFound) {
        fields.Province = t[1];
        fields.City = t[0];
        provinceFound = cityFound = true;
        return;
      }
      if (postalFound && !cityFound) {
        fields.City = t[1];
        fields.Street = t[0];
        cityFound = true;
        return;
      }
      if (!postalFound && hasLength(t[0], 3) && hasLength(t[1], 3)) {
        fields.PostalCode = t[0] + " " + t[1];
        postalFound = true;
        return;
      }
    }

    long k = u;
    if (!postalFound) {
      if (hasLength(t[u - 1], 3) && hasLength(t[u], 3)) {
        fields.PostalCode = t[u - 1] + " " + t[u];
        postalFound = true;
        k = u - 2;
      } else if (hasLength(t[u], 6)) {
        fields.PostalCode = t[u];
        postalFound = true;
        k = u - 1;
      }
    }
    // With nothing left for a field the read below index 0 faults and ends the operation.
    if (!provinceFound) {
      fields.Province = at(t, k--);
      provinceFound = true;
    }
    if (!cityFound) {
      fields.City = at(t, k--);
      cityFound = true;
    }
    if (k >= 0) fields.Street = join(t, 0, k);
  });
}

}  // namespace lf
