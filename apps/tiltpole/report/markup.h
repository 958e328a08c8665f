#pragma once

// Writes a page that is HTML to a browser and XML to everything else: every element is closed,
// every text is escaped.

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tiltpole::cli {

class Markup {
 public:
  using Attributes = std::initializer_list<std::pair<const char*, std::string>>;

  /// An element that holds others; Close ends the one that was opened last.
  void Open(const char* name, Attributes attributes = {});
  void Close();
  /// An element with a text and nothing else.
  void Leaf(const char* name, std::string_view text, Attributes attributes = {});
  /// An element that never holds anything: a void one of HTML, or any of a picture.
  void Empty(const char* name, Attributes attributes);
  /// Text as it was meant: signs with a meaning are escaped, what is no UTF-8 or may not stand in
  /// XML becomes the replacement sign.
  void Text(std::string_view text);
  /// The document type and the style sheet are the only parts that are not escaped.
  void Raw(std::string_view text) { page_ += text; }

  const std::string& Page() const { return page_; }

 private:
  void Tag(const char* name, Attributes attributes, const char* end);

  std::string page_;
  std::vector<const char*> open_;
};

}  // namespace tiltpole::cli
