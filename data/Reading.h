#pragma once

#include <cstdint>
#include <string>

#include "core/Principal.h"

namespace bw {

// What a read routine does with an error besides returning nothing.
enum class OnError {
  silent,
  message,            // shows the error's text
  messageWithSource,  // shows the error's text and the statement right behind it
};

// Nothing when the statement failed.
RecordSetRef readRecords(const std::string& statement, LockType lock, OnError onError);

// The result of a Get: read-only, silent.
inline RecordSetRef getRecord(const std::string& statement) {
  return readRecords(statement, LockType::readOnly, OnError::silent);
}

// The result of a List: it can be written to.
inline RecordSetRef listRecords(const std::string& statement, OnError onError) {
  return readRecords(statement, LockType::optimistic, onError);
}

// The next free code: the highest that the statement finds (it delivers the highest first) and
// one more, in 16 bits; `first` when it finds none; 0 when it failed, which is told in a message.
std::int16_t nextCode(const std::string& statement, const char* column, std::int16_t first = 1,
                      OnError onError = OnError::message);

// The statement of an allocator of a catalogue: codes from 1000 on are left alone.
std::string highestBelow1000(const char* table, const char* column);

}  // namespace bw
