#include "core/ApoyoConeccion.h"

#include "core/Principal.h"
#include "engine/Workgroup.h"

namespace bw {

bool ConnectDatabase(std::string& message) {
  if (DatabaseConnected) return false;
  if (DatabasePath.empty()) {
    message = "Falta iniciar Informacion de Bases de datos";
    return false;
  }
  const std::string connectionString =
      "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + DatabasePath +
      ";Jet OLEDB:System database=" + workgroupPathOf(DatabasePath) +
      ";User Id=Kelps;Password=Kelps";
  if (SessionCreate(DatabaseConnection, connectionString) && SessionOpen(DatabaseConnection)) {
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

bool SessionOpen(Connection& connection) {
  try {
    connection.Open();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace bw
