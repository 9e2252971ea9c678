#pragma once
// The errors that the standard list and tree controls raise, with the numbers
// that callers of the classic controls test for. Handlers pass over them with
// Resume(); a caller that wants to know catches ControlError and reads Number().

#include <stdexcept>

namespace fw {

class ControlError : public std::runtime_error {
  public:
    ControlError(int number, const char* what) : std::runtime_error(what), m_number(number) {}
    int Number() const { return m_number; }

    static constexpr int InvalidPropertyValue = 380;
    static constexpr int IndexOutOfBounds = 35600;
    static constexpr int ElementNotFound = 35601;
    static constexpr int KeyNotUnique = 35602;
    static constexpr int InvalidKey = 35603;
    static constexpr int ImageListNotInitialized = 35613;

  private:
    int m_number;
};

} // namespace fw
