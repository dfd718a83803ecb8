#pragma once

#include "engine/Engine.h"

namespace bw {

// A transaction that is undone unless it is committed.
class EngineTransaction {
 public:
  explicit EngineTransaction(Engine& engine, TransactionKind kind = TransactionKind::ordinary);
  EngineTransaction(const EngineTransaction&) = delete;
  EngineTransaction& operator=(const EngineTransaction&) = delete;
  ~EngineTransaction();

  // Raises DatabaseRefusal unless it is done.
  void commit();
  // Undoes it, or ends a snapshot.
  void end();

 private:
  Engine& engine_;
  bool open_ = true;
};

}  // namespace bw
