// The simulated BMC's dumps: one compressed file per kind under
// <root>/tmp/dumps, written as "<file>.<pid>.part" and renamed into place
// when whole, so that a dump is listed only complete. The store's settings
// and the generations under way are kept in <root>/var/bmc/dumps.ini:
//
//   [Store]      LimitBytes=<bytes the dumps take together>
//   [Generation] Hold=0|1  (generations wait half-way, as for a slow host)
//                Kind<n>=task <id> <monitor id>  (the task generating kind n)
#pragma once

#include <string>

namespace platform::sim {

inline constexpr long long default_dump_store_limit = 16LL << 20;
inline constexpr long long min_dump_store_limit = 64;
inline constexpr long long max_dump_store_limit = 256LL << 20;

const std::string& dump_directory();
const std::string& dump_settings_file();
// The file name of kind's dump; null for an unknown kind.
const char* dump_file_name(int kind);

long long dump_store_limit();
// False for a limit out of range or a setting that cannot be stored.
bool set_dump_store_limit(long long bytes);
bool dump_generation_held();
bool set_dump_generation_held(bool held);

// Where this process writes the dump of kind until it is whole.
std::string dump_part_file(int kind);
// Renames the part file into place for kind, its time of writing set by
// the BMC's clock (the dump's creation), then removes the oldest dumps
// of other kinds until the store fits its limit; a dump larger than the
// limit alone is refused (reason says so) and the part removed.
bool put_dump_in_place(int kind, const std::string& part, std::string& reason);
// Ends the claim of kind's generation: its generation is over.
void release_dump_claim(int kind);

}  // namespace platform::sim
