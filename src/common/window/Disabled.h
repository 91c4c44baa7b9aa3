#pragma once

namespace quillbay {

/// Takes a control or menu item away from the user for as long as this object lives.
template <typename Control>
class Disabled {
public:
    explicit Disabled(Control& control) : control_(control) { control_.setEnabled(false); }
    ~Disabled() { control_.setEnabled(true); }
    Disabled(const Disabled&) = delete;
    Disabled& operator=(const Disabled&) = delete;

private:
    Control& control_;
};

} // namespace quillbay
