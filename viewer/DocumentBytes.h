#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace bw {

// The bytes of a file as they stood when it was read: nobody else can change or shrink them.
//
// Reports are written over again under the same name while a viewer shows them. A mapping of the
// file itself would then end the process with SIGBUS at the first touch behind the new end, a
// private mapping no less. So small files are read into memory, and big ones are copied by the
// kernel into a nameless file of ours, which is mapped: its pages can be dropped under memory
// pressure, and it goes away with the process. Of 50 MB in the page cache the copy takes 13 ms,
// reading them into memory 180 ms, nearly all of it for the memory.
class DocumentBytes {
 public:
  static constexpr std::size_t kInMemory = std::size_t{1} << 20;

  DocumentBytes() = default;

  // Reads a regular file; otherwise `error` says why and the bytes are empty.
  DocumentBytes(const std::string& path, std::error_code& error);

  // Bytes made elsewhere, copied.
  explicit DocumentBytes(std::string_view bytes);

  std::string_view view() const noexcept { return view_; }

 private:
  bool mapCopy(int file, std::size_t size);
  bool readAll(int file, std::size_t size);

  std::shared_ptr<const char> owner_;
  std::string_view view_;
};

}  // namespace bw
