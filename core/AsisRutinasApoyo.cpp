#include "core/AsisRutinasApoyo.h"

namespace bw {
namespace {

std::string takeUpTo(char separator, std::string& text) {
  const std::size_t at = text.find(separator);
  std::string token = text.substr(0, at);
  text.erase(0, at == std::string::npos ? at : at + 1);
  return token;
}

}  // namespace

std::string TakeToken(std::string& text) { return takeUpTo(',', text); }
std::string TakeTokenSemicolon(std::string& text) { return takeUpTo(';', text); }

}  // namespace bw
