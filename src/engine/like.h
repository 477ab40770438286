// How the program compares texts: without regard to case, and the patterns of `Like`. All texts are UTF-8, as
// the catalogue holds them: a query compares a million of them.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin::engine {

/// Replaces `folded` by the text with its case folded: texts that differ in case alone become the same bytes.
/// Bytes that are no UTF-8 become the replacement character.
void FoldCase(std::string_view text, std::string& folded);

/// The order of two texts without regard to case: below 0, 0 or above 0.
int CompareFolded(std::string_view left, std::string_view right);

/// A pattern of `Like`: * any characters, ? one, # one digit, [abc], [a-z], [!a] one of or none of a set;
/// without regard to case. A bracket that nothing closes is a character as any other.
class LikePattern {
 public:
  explicit LikePattern(std::string_view pattern);

  LikePattern(const LikePattern&) = delete;
  LikePattern& operator=(const LikePattern&) = delete;

  bool Matches(std::string_view text) const;

 private:
  enum class Kind { Star, Literal, Any, Digit, Set };
  struct Range {
    char32_t First;
    char32_t Last;
  };
  struct Item {
    Kind Is;
    std::string Text{};           ///< of a Literal, folded
    std::vector<Range> Ranges{};  ///< of a Set
    bool None = false;            ///< the Set is of characters that don't match
  };

  void AddLiteral(char32_t c);
  size_t AddSet(const QList<uint>& pattern, size_t at);
  bool MatchesItems(std::string_view text) const;
  size_t NextStart(size_t item, std::string_view folded, size_t at) const;
  static size_t MatchItem(const Item& item, std::string_view text);

  std::vector<Item> Items;
  /// Finds the literal of a pattern `*literal*`, as nearly all are.
  std::optional<std::boyer_moore_horspool_searcher<std::string::const_iterator>> Part;
};

}  // namespace veldrin::engine
