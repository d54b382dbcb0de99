// The national-language switch at a value of its own while an object lives.
#ifndef KELCL_TESTS_SUPPORT_SWITCH_AT_H
#define KELCL_TESTS_SUPPORT_SWITCH_AT_H

#include <kelcl/dstring.h>

#include <utility>

namespace support {

class SwitchAt {
public:
    explicit SwitchAt(int state) : before_(std::exchange(DString::fgI18NState, state)) {}
    SwitchAt(SwitchAt const&) = delete;
    SwitchAt& operator=(SwitchAt const&) = delete;
    ~SwitchAt() { DString::fgI18NState = before_; }

private:
    int before_;
};

} // namespace support

#endif
