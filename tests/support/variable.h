// A variable of the environment for one test.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

struct Variable {
    std::string name;
    std::optional<std::string> before;

    // Sets it; the end brings back what was.
    Variable(const char *variable, const std::string &value) : name(variable)
    {
        if (const char *old = getenv(variable))
            before = old;
        setenv(variable, value.c_str(), 1);
    }

    ~Variable()
    {
        if (before)
            setenv(name.c_str(), before->c_str(), 1);
        else
            unsetenv(name.c_str());
    }
};
