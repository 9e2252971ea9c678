#pragma once
// Language service: the id from the user's locale environment, or an override.

#include "host/CoreDevServices.h"

#include <QByteArray>

namespace fw::desktop {

class DesktopLanguage final : public CoreDevLanguage {
  public:
    /// 7 German, 9 English.
    static constexpr int German = 7;
    static constexpr int English = 9;

    std::int32_t GetLanguage() override;
    /// Forces this service's id; 0 clears it (the process override or the
    /// environment answer then).
    void SetOverride(int id) { m_override = id; }

    /// The id for one locale value such as "de_DE.UTF-8" or "C".
    static int LanguageOfLocale(const QByteArray& value);

  private:
    int m_override = 0;
};

} // namespace fw::desktop
