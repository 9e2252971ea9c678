#pragma once
// The protocol of the last successful synchronisation of a pair of places:
// one file per pair in the user's data folder, replaced atomically.

#include "desktop/sync/SyncPlan.h"

#include <optional>
#include <string>
#include <string_view>

namespace fw::desktop::sync {

/// The protocol file of the pair, named by a hash of both descriptions, in
/// the writable generic data folder + "/formwerk/sync/".
std::string SyncProtocolFile(const std::string& describe1, const std::string& describe2);

/// A versioned text: each path stored as the length it shares with the path
/// before it plus the rest, so that 100,000 entries of deep trees stay small.
/// Names may hold any bytes but NUL.
std::string EncodeSyncState(const SyncState& state);
/// Nothing for a text that is damaged, cut off or of another version.
std::optional<SyncState> DecodeSyncState(std::string_view text);

enum class ProtocolRead { Missing, Read, Damaged };
/// Missing when there is no file yet (a first run); Damaged with a reason when
/// it cannot be read or decoded.
ProtocolRead ReadSyncProtocol(const std::string& file, SyncState& state, std::string& error);
bool WriteSyncProtocol(const std::string& file, const SyncState& state, std::string& error);

} // namespace fw::desktop::sync
