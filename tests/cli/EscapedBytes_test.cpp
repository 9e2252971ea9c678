// Bytes in text the way Python's "surrogateescape" carries them, so that a
// script reading the JSON answer gets the same bytes back.
#include "cli/EscapedBytes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace {

TEST(EscapedBytes, UndecodableBytesTravelAsEscapesAndComeBackUnchanged)
{
    // The JSON column is what Python's json.dumps(b.decode("utf-8",
    // "surrogateescape")) writes, ASCII escapes aside.
    const struct Row {
        const char* name;
        QByteArray bytes;
        const char* json;
    } rows[] = {
        {"plain UTF-8",
         "Gr\xc3\xbc\xc3\x9f"
         "e.txt",
         "\"Grüße.txt\""},
        {"latin-1 byte", "caf\xe9", "\"caf\\udce9\""},
        {"cut sequence",
         "a\xe4\xb8"
         "b",
         "\"a\\udce4\\udcb8b\""},
        {"overlong slash", "\xc0\xaf", "\"\\udcc0\\udcaf\""},
        {"encoded surrogate", "\xed\xa0\x80", "\"\\udced\\udca0\\udc80\""},
        {"past U+10FFFF", "\xf4\x90\x80\x80", "\"\\udcf4\\udc90\\udc80\\udc80\""},
        {"four-byte emoji", "\xf0\x9f\x91\x8b", "\"👋\""},
        {"control characters", "a\nb\x01", "\"a\\nb\\u0001\""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QString text = fw::cli::DecodeEscaped(row.bytes);
        const QByteArray json =
            QJsonDocument(QJsonObject{{"F", text}}).toJson(QJsonDocument::Compact);
        EXPECT_EQ(json, "{\"F\":" + QByteArray(row.json) + "}");
        const QString read = QJsonDocument::fromJson(json).object().value("F").toString();
        EXPECT_EQ(fw::cli::EncodeEscaped(read), row.bytes);
    }
}

} // namespace
