#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "text/RuntimeError.h"

namespace bw {

// The number of the error that a call raises, nothing when it raises none.
template <class Call>
std::optional<ErrorNumber> raisedBy(Call call) {
  try {
    (void)call();
  } catch (const RuntimeError& error) {
    return error.number();
  }
  return std::nullopt;
}

// Its text, "" when it raises none.
template <class Call>
std::string refusalOf(Call call) {
  try {
    (void)call();
  } catch (const RuntimeError& error) {
    return error.text();
  }
  return {};
}

}  // namespace bw
