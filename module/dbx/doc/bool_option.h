#pragma once

// A switch that begins with a fixed value, for containers that copy a prototype.
template <class Custom>
class BoolOptionTpl {
public:
    operator bool() const { return m_value; }
    BoolOptionTpl& operator=(bool value) {
        m_value = value;
        return *this;
    }

private:
    bool m_value = Custom::kDefault;
};

// Off at first.
struct CustomBoolF {
    static constexpr bool kDefault = false;
};
