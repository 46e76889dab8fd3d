// A typed line as a handler gets it.

#ifndef TESTS_SUPPORT_WORDS_H
#define TESTS_SUPPORT_WORDS_H

#include <sstream>
#include <string>
#include <vector>

/// The words of a line, separated by single blanks.
class Words
{
public:
    explicit Words(const std::string& line)
    {
        std::istringstream stream(line);
        for (std::string word; stream >> word;)
            words_.push_back(word);
        for (std::string& word : words_)
            pointers_.push_back(word.data());
        pointers_.push_back(nullptr);
    }

    [[nodiscard]] int argc() const { return static_cast<int>(words_.size()); }
    [[nodiscard]] char** argv() { return pointers_.data(); }

private:
    std::vector<std::string> words_;
    std::vector<char*> pointers_;
};

#endif
