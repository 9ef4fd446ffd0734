// Tables with declared bounds: a subscript outside them raises run-time error 9.
#pragma once

#include "platform/errors.h"

#include <vector>

namespace vantrel {

/// `N` entries, subscripts 0 to N-1.
template <class T, int N>
class Table {
public:
    Table() : cells_(N) {}
    explicit Table(const T& value) : cells_(N, value) {}

    T& operator()(int i) { return cells_[Checked(i)]; }
    const T& operator()(int i) const { return cells_[Checked(i)]; }
    static constexpr int Size() { return N; }

private:
    static std::size_t Checked(int i) {
        if (i < 0 || i >= N) throw RunTimeError(kSubscript);
        return static_cast<std::size_t>(i);
    }
    std::vector<T> cells_;
};

/// 5 devices by 21 channels. The device comes first and varies fastest: (device, ch) lies at device + ch*5.
template <class T>
class ChannelTable {
public:
    static constexpr int kDevices = 5;
    static constexpr int kChannels = 21;

    ChannelTable() : cells_(kDevices * kChannels) {}
    explicit ChannelTable(const T& value) : cells_(kDevices * kChannels, value) {}

    T& operator()(int device, int ch) { return cells_[Checked(device, ch)]; }
    const T& operator()(int device, int ch) const { return cells_[Checked(device, ch)]; }

private:
    static std::size_t Checked(int device, int ch) {
        if (device < 0 || device >= kDevices || ch < 0 || ch >= kChannels) throw RunTimeError(kSubscript);
        return static_cast<std::size_t>(device) + static_cast<std::size_t>(ch) * kDevices;
    }
    std::vector<T> cells_;
};

}  // namespace vantrel
