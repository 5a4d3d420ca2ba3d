#pragma once

// The groups of koructl's commands. Each adds its own to the command line; what runs them throws
// std::runtime_error with one line when a command fails.

#include <CLI/CLI.hpp>
#include <memory>

#include "tools/koructl/koructl.h"

namespace koructl {

using tools::Require;

void AddStatus(CLI::App& app, const Surroundings& surroundings);
void AddCapture(CLI::App& app, const Surroundings& surroundings);
void AddZoomer(CLI::App& app, const Surroundings& surroundings);
void AddDark(CLI::App& app, const Surroundings& surroundings);
void AddPair(CLI::App& app, const Surroundings& surroundings);
void AddInstall(CLI::App& app, const Surroundings& surroundings);

koru::client::Control Open(const Surroundings& surroundings); // as tools::OpenDriver

// A command that takes arguments of its own: `Arguments` lives as long as the command, `add` tells the command
// line about its members, `run` is called after they were read.
template<class Arguments, class Add, class Run>
void AddCommand(CLI::App& group, const std::string& name, const std::string& help, Add add, Run run)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = group.add_subcommand(name, help);
    add(*command, *arguments);
    command->callback([arguments, run] { run(*arguments); });
}

// A command without arguments.
template<class Run> void AddCommand(CLI::App& group, const std::string& name, const std::string& help, Run run)
{
    group.add_subcommand(name, help)->callback(run);
}

// A group of commands, one of which must be named.
CLI::App& AddGroup(CLI::App& app, const std::string& name, const std::string& help);

} // namespace koructl
