// IPMI linear conversion between raw sensor values and units, usable while
// the SDR table is built at compile time.
#pragma once

#include <cstdint>

#include "platform/libipmi_sensors.h"

namespace platform::sim {

// value * 10^exponent, dividing for negative exponents so that 1200 * 10^-3
// gives the double nearest 1.2.
constexpr double scale_by_ten(double value, int exponent) {
    int steps = exponent < 0 ? -exponent : exponent;
    double factor = 1;
    for (int i = 0; i < steps && i < 64; ++i) factor *= 10;
    return exponent < 0 ? value / factor : value * factor;
}

constexpr double linear_value(int raw, int m, int b, int k1, int k2) {
    return scale_by_ten(m * static_cast<double>(raw) + scale_by_ten(b, k1), k2);
}

// The raw value whose conversion comes nearest to value, within the
// record's raw format (0..255, or -128..127 as two's complement).
constexpr uint8_t nearest_raw(const St_SensorData& record, double value) {
    bool is_signed = record.analog_format == ANALOG_TWOS_COMPLEMENT;
    double low = is_signed ? -128 : 0;
    double high = is_signed ? 127 : 255;
    double unscaled = scale_by_ten(value, -record.k2) - scale_by_ten(record.b, record.k1);
    double exact = record.m != 0 ? unscaled / record.m : 0;
    double rounded = exact >= 0 ? exact + 0.5 : exact - 0.5;
    // NaN fails every comparison and ends at low.
    double clamped = rounded > low - 1 ? (rounded < high + 1 ? rounded : high) : low;
    const long long low_raw = is_signed ? -128 : 0;
    const long long high_raw = is_signed ? 127 : 255;
    long long raw = static_cast<long long>(clamped);
    raw = raw < low_raw ? low_raw : raw > high_raw ? high_raw : raw;
    return static_cast<uint8_t>(raw & 0xFF);
}

}  // namespace platform::sim
