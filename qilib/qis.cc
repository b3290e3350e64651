#include "qilib/qis.h"

Qis::Qis() = default;
Qis::Qis(const Qis& other) = default;
Qis::Qis(Qis&& other) noexcept = default;
Qis& Qis::operator=(const Qis& other) = default;
Qis& Qis::operator=(Qis&& other) noexcept = default;
Qis::~Qis() = default;
