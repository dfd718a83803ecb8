#pragma once

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace bw {

// A large file that is written piece by piece and appears only when it is complete: until then it
// has no name, or a temporary one where the file system knows of no nameless files, and what stood
// in its place before stays untouched. It is gone without a trace when it is not finished; the end
// of the process leaves nothing of a nameless one. Not synced: for what can be made again, or what
// its folder syncs (Files.h). Failures raise error 76 with a sentence that names the file and the
// reason.
class WholeFile {
 public:
  WholeFile(std::filesystem::path file, std::filesystem::perms permissions);
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;
  ~WholeFile();

  void append(std::string_view piece) {
    if (piece.size() > kBuffer - used_) return appendSlowly(piece);
    std::memcpy(buffer_.get() + used_, piece.data(), piece.size());
    used_ += piece.size();
  }

  // Puts the file in its place; nothing can be appended afterwards.
  void finish();

 private:
  static constexpr std::size_t kBuffer = 1U << 20U;

  void open(std::filesystem::perms permissions);
  bool giveName();
  void giveUp() noexcept;
  void appendSlowly(std::string_view piece);
  void flush();
  void write(std::string_view text);
  [[noreturn]] void refuse(int error) const;

  std::filesystem::path file_;
  std::string temporary_;  // empty as long as it has no name
  int descriptor_ = -1;
  std::unique_ptr<char[]> buffer_;
  std::size_t used_ = 0;
};

}  // namespace bw
