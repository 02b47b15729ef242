#include "platform/sim/sensor_conversion.h"

extern "C" double cal_val(int raw, int m, int b, int k1, int k2) {
    return platform::sim::linear_value(raw, m, b, k1, k2);
}

extern "C" double SensorRawToValue(const St_SensorData* record, uint8_t raw) {
    int value = record->analog_format == ANALOG_TWOS_COMPLEMENT ? static_cast<int8_t>(raw) : raw;
    return cal_val(value, record->m, record->b, record->k1, record->k2);
}
