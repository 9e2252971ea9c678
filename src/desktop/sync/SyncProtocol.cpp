#include "desktop/sync/SyncProtocol.h"

#include "desktop/AtomicWrite.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace fw::desktop::sync {

namespace {

constexpr std::string_view Header = "formwerk-sync-protocol 1\n";

std::size_t sharedLength(std::string_view a, std::string_view b)
{
    std::size_t n = 0;
    while (n < a.size() && n < b.size() && a[n] == b[n])
        ++n;
    return n;
}

// Reads one number followed by `end` from text at pos.
template <typename Number>
bool readNumber(std::string_view text, std::size_t& pos, char end, Number& value)
{
    const char* first = text.data() + pos;
    const char* last = text.data() + text.size();
    const auto [next, failure] = std::from_chars(first, last, value);
    if (failure != std::errc{} || next == last || *next != end)
        return false;
    pos = std::size_t(next - text.data()) + 1;
    return true;
}

} // namespace

std::string SyncProtocolFile(const std::string& describe1, const std::string& describe2)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArray::fromStdString(describe1));
    hash.addData(QByteArrayView("\0", 1));
    hash.addData(QByteArray::fromStdString(describe2));
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/formwerk/sync/";
    return QFile::encodeName(folder).toStdString() + hash.result().toHex().left(32).toStdString() +
           ".protocol";
}

std::string EncodeSyncState(const SyncState& state)
{
    std::string text(Header);
    std::string_view previous;
    for (const auto& [path, record] : state) {
        const std::size_t shared = sharedLength(previous, path);
        const int flags = (record.side1.folder ? 1 : 0) | (record.side2.folder ? 2 : 0);
        text += std::to_string(shared) + ' ';
        text.append(path, shared);
        text += '\0';
        text += std::to_string(flags) + ' ' + std::to_string(record.side1.size) + ' ' +
                std::to_string(record.side1.mtime) + ' ' + std::to_string(record.side2.size) + ' ' +
                std::to_string(record.side2.mtime) + '\n';
        previous = path;
    }
    text += "end " + std::to_string(state.size()) + '\n';
    return text;
}

std::optional<SyncState> DecodeSyncState(std::string_view text)
{
    if (!text.starts_with(Header))
        return std::nullopt;
    SyncState state;
    std::string previous;
    std::size_t pos = Header.size();
    while (pos < text.size()) {
        if (text.substr(pos).starts_with("end ")) {
            pos += 4;
            std::size_t count = 0;
            if (!readNumber(text, pos, '\n', count) || count != state.size() || pos != text.size())
                return std::nullopt;
            return state;
        }
        std::size_t shared = 0;
        if (!readNumber(text, pos, ' ', shared) || shared > previous.size())
            return std::nullopt;
        const auto nul = text.find('\0', pos);
        if (nul == std::string_view::npos)
            return std::nullopt;
        std::string path = previous.substr(0, shared);
        path.append(text.substr(pos, nul - pos));
        pos = nul + 1;
        int flags = 0;
        SyncRecord record;
        if (path.empty() || !readNumber(text, pos, ' ', flags) ||
            !readNumber(text, pos, ' ', record.side1.size) ||
            !readNumber(text, pos, ' ', record.side1.mtime) ||
            !readNumber(text, pos, ' ', record.side2.size) ||
            !readNumber(text, pos, '\n', record.side2.mtime) || flags < 0 || flags > 3)
            return std::nullopt;
        record.side1.path = record.side2.path = path;
        record.side1.folder = flags & 1;
        record.side2.folder = flags & 2;
        previous = path;
        state.emplace_hint(state.end(), std::move(path), std::move(record));
    }
    return std::nullopt; // cut off before its end line
}

ProtocolRead ReadSyncProtocol(const std::string& file, SyncState& state, std::string& error)
{
    if (::access(file.c_str(), F_OK) != 0 && errno == ENOENT)
        return ProtocolRead::Missing;
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        error = "Das Protokoll kann nicht gelesen werden";
        return ProtocolRead::Damaged;
    }
    std::ostringstream text;
    text << in.rdbuf();
    auto decoded = DecodeSyncState(text.str());
    if (!decoded) {
        error = "Das Protokoll ist beschädigt oder unvollständig";
        return ProtocolRead::Damaged;
    }
    state = std::move(*decoded);
    return ProtocolRead::Read;
}

bool WriteSyncProtocol(const std::string& file, const SyncState& state, std::string& error)
{
    const auto slash = file.rfind('/');
    if (!QDir().mkpath(QFile::decodeName(QByteArray::fromStdString(file.substr(0, slash)))) ||
        !WriteFileAtomically(file, EncodeSyncState(state))) {
        error = "Das Protokoll konnte nicht geschrieben werden";
        return false;
    }
    return true;
}

} // namespace fw::desktop::sync
