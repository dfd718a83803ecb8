#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bw {

// Where a server's database is: "postgresql://anna@server/office", several hosts and further
// settings in the way of libpq.

// Whether a target is meant as such.
bool isServerAddress(std::string_view target) noexcept;

// The address as what opens a connection: what it does not say itself is set for an office. Beyond
// this computer the server must prove by its certificate that it is the one that is named. Of
// several hosts the one that takes changes is asked for. Raises DatabaseRefusal (notConnected) for
// one that cannot be read.
std::vector<std::pair<std::string, std::string>> connectionSettings(const std::string& address);

// The same as one text, as the server's own programs take it; for another database if one is named.
std::string connectionText(const std::string& address, const std::string& database = {});

// The name of the database that an address means.
std::string databaseNameOf(const std::string& address);

// Whether it holds a password, which would stand for everybody to read. An address that cannot be
// read holds none.
bool holdsPassword(const std::string& address);

}  // namespace bw
