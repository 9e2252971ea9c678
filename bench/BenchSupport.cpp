#include "BenchSupport.h"

#include <QString>
#include <QtGlobal>

namespace {
QtMessageHandler g_nextHandler = nullptr;
} // namespace

void fw::bench::QuietOffscreenNotices()
{
    g_nextHandler = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& where, const QString& text) {
            if (type == QtWarningMsg &&
                (text.startsWith(QLatin1String("This plugin does not support")) ||
                 text.contains(QLatin1String("XDG_"))))
                return;
            g_nextHandler(type, where, text);
        });
}
