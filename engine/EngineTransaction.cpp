#include "engine/EngineTransaction.h"

#include <utility>

namespace bw {

EngineTransaction::EngineTransaction(Engine& engine, TransactionKind kind) : engine_(engine) {
  engine_.begin(kind);
}

EngineTransaction::~EngineTransaction() {
  try {
    end();
  } catch (const RuntimeError&) {
    // It ends by an error that tells more.
  }
}

void EngineTransaction::commit() {
  engine_.commit().require();
  open_ = false;
}

void EngineTransaction::end() {
  if (std::exchange(open_, false) && engine_.inTransaction()) engine_.rollback();
}

}  // namespace bw
