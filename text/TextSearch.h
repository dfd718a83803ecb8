#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

// A text as it is searched: folded, letters without their accents. Signs that keyboards do not have
// become those that they have: the apostrophe and the dashes of print, blanks of other widths.
std::string searchText(std::string_view text);

// How well a text agrees with what is searched: it holds it somewhere, at the start of a word (what
// is neither letter nor digit parts words), or begins with it.
enum class Hit : std::uint8_t { none, inside, atWord, atStart };

// Of one text as it stands. `wanted` is a search text, not an empty one.
Hit hitOf(std::string_view text, std::string_view wanted);

// Many texts, made ready to be searched by parts of them. They are numbered as they are added.
class TextSearch {
 public:
  void reserve(std::size_t texts, std::size_t bytes);
  void add(std::string_view text);
  // Adds texts without making them ready; makeReady() does that for all, when they are plain ASCII.
  void addPlain(std::string_view text);
  void makeReady();

  std::size_t count() const noexcept { return starts_.size() - 1; }

  // Searches all texts and returns the best hit. `wanted` is a search text, not an empty one.
  Hit search(std::string_view wanted);
  // What the last search found in that text; nothing in one that does not exist.
  Hit hit(std::size_t number) const noexcept {
    return number < hits_.size() ? hits_[number] : Hit::none;
  }

 private:
  void close();

  std::string texts_;  // one after another, each closed by a zero byte
  std::vector<std::uint32_t> starts_{0};
  std::vector<Hit> hits_;
};

}  // namespace bw
