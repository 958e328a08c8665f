#pragma once

// The reference tables: text, one entry a line, doubles as the sixteen digits of their bits.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace tiltpole_test {

inline std::string Hex(std::uint64_t bits) {
  char text[17];
  std::snprintf(text, sizeof text, "%08lx%08lx", static_cast<unsigned long>(bits >> 32U),
                static_cast<unsigned long>(bits & 0xFFFFFFFFU));
  return text;
}

inline std::uint64_t FromHex(const std::string& text) {
  return std::strtoull(text.c_str(), nullptr, 16);
}

inline double DoubleFromHex(const std::string& text) {
  const std::uint64_t bits = FromHex(text);
  double value = 0.0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// Lines "name: what|word word ...".
using Table = std::map<std::string, std::vector<std::string>>;

inline Table ReadTable(const std::string& name) {
  std::ifstream file(std::string(REFERENCE_FOLDER) + "/" + name);
  Table table;
  std::string line;
  while (std::getline(file, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::size_t bar = line.find('|');
    if (line.empty() || line[0] == '#' || bar == std::string::npos) continue;
    auto& words = table[line.substr(0, bar)];
    for (std::size_t at = bar + 1; at < line.size();) {
      const std::size_t end = std::min(line.find(' ', at), line.size());
      words.push_back(line.substr(at, end - at));
      at = end + 1;
    }
  }
  return table;
}

// Whether the tables are to be written anew instead of compared with.
inline bool WritesReferences() { return std::getenv("TILTPOLE_WRITE_REFERENCES") != nullptr; }

inline void WriteTable(const std::string& name, const std::string& heading, const Table& table) {
  std::ofstream file(std::string(REFERENCE_FOLDER) + "/" + name, std::ios::binary);
  file << "# " << heading << '\n';
  for (const auto& [key, words] : table) {
    for (std::size_t i = 0; i < words.size(); i += 5) {
      file << key << '|';
      for (std::size_t j = i; j < i + 5 && j < words.size(); ++j) {
        file << (j == i ? "" : " ") << words[j];
      }
      file << '\n';
    }
  }
}

}  // namespace tiltpole_test
