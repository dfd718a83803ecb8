#include "core/ApoyoConeccion.h"

#include "core/Principal.h"
#include "engine/Workgroup.h"

namespace bw {
namespace {

std::string advice;

}  // namespace

std::string connectionStringOf(const std::string& path) {
  return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path +
         ";Jet OLEDB:System database=" + workgroupPathOf(path) + ";User Id=Kelps;Password=Kelps";
}

bool ConnectDatabase(std::string& message, EngineAccess access) {
  if (DatabaseConnected) return false;
  if (DatabasePath.empty()) {
    message = "Falta iniciar Informacion de Bases de datos";
    return false;
  }
  const std::string connectionString = connectionStringOf(DatabasePath);
  if (SessionCreate(DatabaseConnection, connectionString) &&
      SessionOpen(DatabaseConnection, access)) {
    DatabaseConnected = true;
    return true;
  }
  message = "Problems stablishing connection" + connectionString;
  return false;
}

bool SessionCreate(Connection& connection, const std::string& connectionString) {
  connection = Connection();
  connection.ConnectionString = connectionString;
  return true;
}

const std::string& connectionAdvice() { return advice; }

bool SessionOpen(Connection& connection, EngineAccess access) {
  advice.clear();
  try {
    connection.Open(access);
    return true;
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() == Refusal::full)
      advice = "The disk is full. Please make room, and start the program again.";
    if (refusal.why() == Refusal::foreignPart) advice = refusal.text();
    return false;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace bw
