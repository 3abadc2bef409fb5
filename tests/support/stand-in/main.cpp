// SPDX-License-Identifier: GPL-3.0-or-later
//
// Stands in for other programs in the tests, on every system. The program is copied under the name of the
// other one; what it does is in the file NAME.steps, in its own folder or in the one that QUORVEL_STAND_INS
// names. File names in steps are relative to that folder. Without steps it fails.
//
// One step a line. $1 to $9 are the program's arguments; \n, \r, \0, \\ and \xHH are bytes.
//
//   record            appends the arguments to NAME.calls: each ends in NUL, and an empty one ends the call
//   out TEXT          prints on standard output; "err TEXT" on standard error
//   zeros N           prints N zero bytes
//   input             waits for the end of the input, then prints "end"
//   id FILE           writes the process id
//   write FILE|TEXT   replaces a file; "copy FROM|TO" copies one, "vanish" renames the program itself
//   alone FOLDER      makes the folder until the program ends, or the file "clash" where it exists; "free
//   FOLDER"
//                     removes it early, for a program that is killed
//   pause MS          waits; "until FILE" waits for a file; "hang" waits for a minute; "deaf" ignores SIGTERM
//   exit CODE         ends; "crash" ends as a crashed program does
//   if N TEXT STEP    takes the step when argument N is TEXT; "when FILE STEP" when the file exists; "folder
//   N STEP"
//                     when argument N names a folder
#include "tests/support/stand-in/Process.h"
#include "tools/flash-stand-in/Crash.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Ends a program that the test forgets.
constexpr std::chrono::seconds cHang(60);
constexpr std::chrono::milliseconds cPoll(5);
constexpr int cBadSteps = 97;
constexpr int cHexadecimal = 16;

class Player
{
public:
    Player(const fs::path& program, std::vector<std::string> arguments)
        : m_program(program), m_arguments(std::move(arguments))
    {
        const std::string folder = standin::variable("QUORVEL_STAND_INS");
        m_folder = folder.empty() ? program.parent_path() : fs::u8path(folder);
        m_name = program.stem().u8string();
    }

    /// Plays all steps; the exit code of the program.
    int play()
    {
        std::ifstream steps(file(m_name + ".steps"), std::ios::binary);
        if (!steps) {
            std::fprintf(stderr, "%s is a stand-in of the tests without steps.\n", m_name.c_str());
            return cBadSteps;
        }
        for (std::string line; m_exitCode < 0 && std::getline(steps, line);)
            take(line);
        for (const fs::path& folder : m_ownFolders)
            fs::remove(folder);
        return m_exitCode < 0 ? 0 : m_exitCode;
    }

private:
    fs::path file(const std::string& name) const { return m_folder / fs::u8path(name); }

    std::string argument(std::size_t number) const
    {
        return number < m_arguments.size() ? m_arguments[number] : std::string();
    }

    /// \a text with arguments and escaped bytes put in.
    std::string expanded(const std::string& text) const
    {
        std::string result;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char next = i + 1 < text.size() ? text[i + 1] : '\0';
            if (text[i] == '$' && next >= '1' && next <= '9') {
                result += argument(std::size_t(next - '0'));
                ++i;
            } else if (text[i] == '\\' && next == 'x') {
                result += char(std::stoi(text.substr(i + 2, 2), nullptr, cHexadecimal));
                i += 3;
            } else if (text[i] == '\\' && next != '\0') {
                static const std::map<char, char> cEscapes{{'n', '\n'}, {'r', '\r'}, {'0', '\0'}};
                const auto escape = cEscapes.find(next);
                result += escape == cEscapes.end() ? next : escape->second;
                ++i;
            } else {
                result += text[i];
            }
        }
        return result;
    }

    /// Splits \a text at the first \a separator.
    static std::pair<std::string, std::string> divided(const std::string& text, char separator)
    {
        const std::size_t at = text.find(separator);
        return at == std::string::npos ? std::pair(text, std::string())
                                       : std::pair(text.substr(0, at), text.substr(at + 1));
    }

    static void print(const std::string& text, std::FILE* stream)
    {
        std::fwrite(text.data(), 1, text.size(), stream);
        std::fflush(stream);
    }

    static void write(const fs::path& path, const std::string& content,
                      std::ios::openmode mode = std::ios::trunc)
    {
        std::ofstream(path, std::ios::binary | std::ios::out | mode) << content;
    }

    void take(const std::string& line)
    {
        const auto [verb, rest] = divided(line, ' ');
        if (!takeCondition(verb, rest) && !takeFileStep(verb, rest) && !takeProcessStep(verb, rest)) {
            std::fprintf(stderr, "%s: no such step: %s\n", m_name.c_str(), line.c_str());
            m_exitCode = cBadSteps;
        }
    }

    bool takeCondition(const std::string& verb, const std::string& rest)
    {
        const auto [subject, step] = divided(rest, ' ');
        if (verb == "if") {
            const auto [text, then] = divided(step, ' ');
            if (argument(std::size_t(std::stoul(subject))) == text)
                take(then);
        } else if (verb == "when") {
            if (fs::exists(file(subject)))
                take(step);
        } else if (verb == "folder") {
            if (fs::is_directory(fs::u8path(argument(std::size_t(std::stoul(subject))))))
                take(step);
        } else {
            return false;
        }
        return true;
    }

    bool takeFileStep(const std::string& verb, const std::string& rest)
    {
        const auto [from, to] = divided(expanded(rest), '|');
        if (verb == "record") {
            std::string call;
            for (std::size_t i = 1; i < m_arguments.size(); ++i)
                call += m_arguments[i] + '\0';
            write(file(m_name + ".calls"), call + '\0', std::ios::app);
        } else if (verb == "id") {
            // Under its name the file is complete.
            write(file(from + ".new"), std::to_string(standin::processId()));
            fs::rename(file(from + ".new"), file(from));
        } else if (verb == "write") {
            write(file(from), to);
        } else if (verb == "copy") {
            fs::copy_file(file(from), file(to), fs::copy_options::overwrite_existing);
        } else if (verb == "vanish") {
            fs::rename(m_program, fs::path(m_program) += ".gone");
        } else if (verb == "alone") {
            if (fs::create_directory(file(from)))
                m_ownFolders.push_back(file(from));
            else
                write(file("clash"), {});
        } else if (verb == "free") {
            fs::remove(file(from));
        } else {
            return false;
        }
        return true;
    }

    bool takeProcessStep(const std::string& verb, const std::string& rest)
    {
        if (verb == "out" || verb == "err") {
            print(expanded(rest), verb == "out" ? stdout : stderr);
        } else if (verb == "zeros") {
            print(std::string(std::stoul(rest), '\0'), stdout);
        } else if (verb == "input") {
            while (std::getchar() != EOF) {
            }
            print("end", stdout);
        } else if (verb == "pause") {
            std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(rest)));
        } else if (verb == "until") {
            while (!fs::exists(file(rest)))
                std::this_thread::sleep_for(cPoll);
        } else if (verb == "hang") {
            std::this_thread::sleep_for(cHang);
        } else if (verb == "deaf") {
            std::signal(SIGTERM, SIG_IGN);
        } else if (verb == "crash") {
            crash();
        } else if (verb == "exit") {
            m_exitCode = std::stoi(rest);
        } else {
            return false;
        }
        return true;
    }

    const fs::path m_program;
    const std::vector<std::string> m_arguments;
    fs::path m_folder;
    std::string m_name;
    std::vector<fs::path> m_ownFolders;
    /// Negative until a step ends the program.
    int m_exitCode = -1;
};

} // namespace

int main(int argc, char** argv)
{
    standin::useBinaryStreams();
    return Player(standin::program(), standin::arguments(argc, argv)).play();
}
