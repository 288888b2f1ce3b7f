#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

/// The unit does not take a command; what() is the one word that it answers with.
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const std::string &word) : std::runtime_error(word) {}
};

/// Reads a command from left to right, as strictly as the unit does: no blanks but those of the
/// command's form, no signs and no leading zeros. The text must outlive the scanner.
class CommandScanner {
public:
    explicit CommandScanner(std::string_view text) : left(text) {}

    /// Steps over `literal` if it comes next.
    bool take(std::string_view literal);

    /// Steps over `literal`. @throws Refusal("form") if something else comes next
    void expect(std::string_view literal);

    /// Steps over a number. @throws Refusal("number") if none comes next, Refusal(word) if it is
    /// not in 1..last
    int number(int last, std::string_view word);

    /// Steps over everything that is left.
    std::string_view rest();

    [[nodiscard]] bool atEnd() const { return left.empty(); }

    /// @throws Refusal("form") if anything is left
    void end() const;

private:
    std::string_view left;
};
