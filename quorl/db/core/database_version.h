// Versions that this program writes into drawings, and the building of a new drawing.
#pragma once

class ZnDbDatabase;

namespace Quorl {
constexpr int kFileVersion = 33;
constexpr int kFileMaintenanceVersion = 427;
} // namespace Quorl

// Gives an empty drawing its tables, standard records, spaces and layouts.
void zndbBuildDefaults(ZnDbDatabase& database);
