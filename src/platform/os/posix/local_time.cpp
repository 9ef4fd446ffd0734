#include "platform/os/local_time.h"

namespace vantrel::os {

std::tm LocalTime(std::int64_t seconds) {
    const std::time_t moment = seconds;
    std::tm fields{};
    localtime_r(&moment, &fields);
    return fields;
}

std::int64_t FromLocalTime(std::tm fields) {
    fields.tm_isdst = -1;  // not known
    return std::mktime(&fields);
}

}  // namespace vantrel::os
