#pragma once

#include <QObject>
#include <exception>
#include <functional>
#include <type_traits>
#include <utility>

#include "text/BrokenOff.h"

namespace bw {

// What happens with an error that no handler caught. The program's own shows "Run-time error 'n':"
// with the text in a box and ends the process at once, so that nothing is stored; tests put
// something else in its place.
std::function<void(const std::exception&)>& unhandledError();

// Runs an event handler: nothing that it throws reaches the toolkit's event loop.
template <class Handler>
void guarded(Handler handler) noexcept {
  try {
    handler();
  } catch (const BrokenOff&) {
    // Everything is as it was before the event.
  } catch (const std::exception& error) {
    unhandledError()(error);
  }
}

// Calls a handler with a signal's arguments, or with none when it takes none.
template <class Handler, class... Arguments>
void callHandler(const Handler& handler, Arguments... arguments) {
  if constexpr (std::is_invocable_v<const Handler&, Arguments...>)
    handler(arguments...);
  else
    handler();
}

// Connects a signal to a handler that runs guarded.
template <class Sender, class Signal, class Handler>
void onEvent(Sender* sender, Signal signal, QObject* context, Handler handler) {
  QObject::connect(sender, signal, context, [handler = std::move(handler)](auto... arguments) {
    guarded([&] { callHandler(handler, arguments...); });
  });
}

}  // namespace bw
