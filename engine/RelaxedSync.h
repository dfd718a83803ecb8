#pragma once

namespace bw {

class Connection;

// While it lives, commits are kept from a crash of the program but not from a power cut, which
// makes each some six times quicker. For loops of many transactions whose rows nobody has been
// told about yet: call finish() before their result is shown. Not inside a transaction.
class RelaxedSync {
 public:
  explicit RelaxedSync(Connection& connection);
  RelaxedSync(const RelaxedSync&) = delete;
  RelaxedSync& operator=(const RelaxedSync&) = delete;
  ~RelaxedSync();  // ends it if need be; a failure passes in silence

  // From here on a commit is safe again, and so is everything committed before. Raises error
  // `database` when the disk refuses: what was committed is stored all the same, and the sentence
  // says what makes it safe. A lost server raises DatabaseRefusal: the latest may be gone.
  void finish();

 private:
  Connection& connection_;
  bool relaxed_ = false;
};

}  // namespace bw
