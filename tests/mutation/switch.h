#pragma once
// The switch of the mutants in a copy of the sources that tests/mutation/run.py has written:
// VELMOR_MUTANTE is the number of the one that is on. With VELMOR_MUTANTI_RAGGIUNTI the program
// adds the numbers of those that it has come by to that file.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <vector>

namespace mutation {

class Switch {
  public:
    Switch() {
        if (const char* number = std::getenv("VELMOR_MUTANTE"); number != nullptr) {
            active_ = std::atoi(number);
        }
        file_ = std::getenv("VELMOR_MUTANTI_RAGGIUNTI");
    }
    ~Switch() {
        if (file_ == nullptr || reached_.empty()) {
            return;
        }
        std::ofstream out(file_, std::ios::app);
        for (std::size_t number = 0; number < reached_.size(); ++number) {
            if (reached_[number]) {
                out << number << '\n';
            }
        }
    }
    Switch(const Switch&) = delete;
    Switch& operator=(const Switch&) = delete;
    Switch(Switch&&) = delete;
    Switch& operator=(Switch&&) = delete;

    bool on(int number) {
        if (file_ != nullptr) {
            const auto index = static_cast<std::size_t>(number);
            if (reached_.size() <= index) {
                reached_.resize(index + 1);
            }
            reached_[index] = true;
        }
        return number == active_;
    }

  private:
    int active_ = 0;
    const char* file_ = nullptr;
    std::vector<bool> reached_;
};

inline bool on(int number) {
    static Switch numbers;
    return numbers.on(number);
}

enum Operator { lt, le, gt, ge, eq, ne };

template <Operator how, class A, class B>
bool compared(const A& a, const B& b) {
    if constexpr (how == lt) {
        return a < b;
    } else if constexpr (how == le) {
        return a <= b;
    } else if constexpr (how == gt) {
        return a > b;
    } else if constexpr (how == ge) {
        return a >= b;
    } else if constexpr (how == eq) {
        return a == b;
    } else {
        return a != b;
    }
}

/// a < Comparison<...>{} < b compares a and b by the first operator, or by the second while the
/// mutant is on; == in the same way, for the rank of == and !=.
template <int number, Operator usual, Operator other>
struct Comparison {};

template <class A, int number, Operator usual, Operator other>
struct Left {
    const A& value;
};

template <class A, int number, Operator usual, Operator other>
Left<A, number, usual, other> operator<(const A& value, Comparison<number, usual, other>) {
    return {value};
}
template <class A, class B, int number, Operator usual, Operator other>
bool operator<(const Left<A, number, usual, other>& left, const B& right) {
    return on(number) ? compared<other>(left.value, right) : compared<usual>(left.value, right);
}
template <class A, int number, Operator usual, Operator other>
Left<A, number, usual, other> operator==(const A& value, Comparison<number, usual, other>) {
    return {value};
}
template <class A, class B, int number, Operator usual, Operator other>
bool operator==(const Left<A, number, usual, other>& left, const B& right) {
    return on(number) ? compared<other>(left.value, right) : compared<usual>(left.value, right);
}

/// condition || Swapped<...>{} is the condition, or its contrary while the mutant is on.
template <int number>
struct Swapped {};

template <class A, int number>
bool operator||(const A& condition, Swapped<number>) {
    return static_cast<bool>(condition) != on(number);
}

}  // namespace mutation
