// SPDX-License-Identifier: GPL-3.0-or-later

// Plays sunxi-fel for demonstrations and tests: the same commands, output and exit codes, with a file in
// the place of the controller's flash. See Behaviour.h for what can be made to go wrong.

#include "Behaviour.h"
#include "FlashImage.h"
#include "ProgressBar.h"
#include "tools/flash-stand-in/Crash.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int cExitFailure = 1;
constexpr int cExitTransferFailure = 2;
/// What the tool sends in one go, and how often it reports.
constexpr std::size_t cStepBytes = 64 * 1024;
/// Shown when the transfer takes no time at all.
constexpr double cFullSpeed = 99999.9;

using Clock = std::chrono::steady_clock;

void printFlushed(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

int fail(int exitCode, const std::string& text)
{
    std::fprintf(stderr, "%s\n", text.c_str());
    return exitCode;
}

/// 0, or the exit code with which every command ends when the device cannot be reached.
int openDevice(const Behaviour& behaviour)
{
    if (behaviour.fault == Behaviour::Fault::NoDevice)
        return fail(cExitFailure, "ERROR: Allwinner USB FEL device not found!");
    if (behaviour.fault == Behaviour::Fault::NoPermission)
        return fail(cExitFailure, "ERROR: You don't have permission to access Allwinner USB FEL device");
    return 0;
}

[[noreturn]] void hang()
{
    for (;;)
        std::this_thread::sleep_for(std::chrono::hours(1));
}

/// Plays the fault that is due at \a percent: 0 to go on, else the exit code.
int faultAt(double percent, const Behaviour& behaviour)
{
    const auto due = [percent](const std::optional<double>& at) { return at && percent >= *at; };
    if (due(behaviour.failAtPercent))
        return fail(cExitTransferFailure, "usb_bulk_send() ERROR -7: Operation timed out");
    if (due(behaviour.vanishAtPercent))
        return fail(cExitTransferFailure,
                    "usb_bulk_send() ERROR -4: No such device (it may have been disconnected)");
    if (due(behaviour.crashAtPercent))
        crash();
    if (due(behaviour.stallAtPercent))
        hang();
    return 0;
}

/// Writes \a data step by step at the pace of a real device, with the progress line when \a showProgress.
int writeSteps(FlashImage& flash, std::uint64_t address, const std::vector<char>& data, bool showProgress,
               const Behaviour& behaviour)
{
    const bool faulty = !behaviour.onlyAddress || *behaviour.onlyAddress == address;
    const auto started = Clock::now();
    for (std::size_t done = 0; done < data.size();) {
        if (const int exitCode = faulty ? faultAt(100.0 * double(done) / double(data.size()), behaviour) : 0)
            return exitCode;
        const std::size_t count = std::min(cStepBytes, data.size() - done);
        if (!flash.write(address + done, data.data() + done, count))
            return fail(cExitTransferFailure, "usb_bulk_send() ERROR -9: Pipe error");
        done += count;
        if (behaviour.kiloBytesPerSecond > 0)
            std::this_thread::sleep_until(
                started + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(
                              double(done) / 1000.0 / behaviour.kiloBytesPerSecond)));
        const double seconds = std::chrono::duration<double>(Clock::now() - started).count();
        const double speed = seconds > 0 ? std::min(double(done) / 1000.0 / seconds, cFullSpeed) : cFullSpeed;
        if (showProgress)
            printFlushed(progressLine(done, data.size(), speed));
    }
    return faulty && !data.empty() ? faultAt(100.0, behaviour) : 0;
}

int spiFlashWrite(const char* addressText, const char* path, bool showProgress, const Behaviour& behaviour)
{
    // A folder opens as well and then has no bytes, as for the C library that the real tool reads with.
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open())
        return fail(cExitFailure, std::string("Failed to open input file: ") + path);
    const std::uint64_t address = std::strtoull(addressText, nullptr, 0);
    if (address % FlashImage::cSectorBytes != 0)
        return fail(cExitFailure, "aw_fel_spiflash_write: 'addr' must be " +
                                      std::to_string(FlashImage::cSectorBytes) + " bytes aligned");
    std::error_code error;
    const std::vector<char> data = std::filesystem::is_directory(path, error)
                                       ? std::vector<char>()
                                       : std::vector<char>{std::istreambuf_iterator<char>(file), {}};
    if (behaviour.fault == Behaviour::Fault::UnsupportedSpi) {
        printFlushed("SPI support not implemented yet for 1663 (F1C100s)!\n");
        return 0;
    }
    FlashImage flash(behaviour.imagePath);
    if (!flash.isOpen())
        return fail(cExitFailure, "flash stand-in: cannot open the flash image " + behaviour.imagePath);
    if (!flash.erase(address, data.size()))
        return fail(cExitTransferFailure, "usb_bulk_send() ERROR -9: Pipe error");
    return writeSteps(flash, address, data, showProgress, behaviour);
}

int spiFlashRead(const char* addressText, const char* sizeText, const char* path, bool showProgress,
                 const Behaviour& behaviour)
{
    const std::uint64_t address = std::strtoull(addressText, nullptr, 0);
    std::vector<char> data(std::strtoull(sizeText, nullptr, 0));
    FlashImage flash(behaviour.imagePath);
    if (!flash.isOpen() || !flash.read(address, data.data(), data.size()))
        return fail(cExitTransferFailure, "usb_bulk_recv() ERROR -9: Pipe error");
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file.write(data.data(), std::streamsize(data.size())).flush())
        return fail(cExitFailure, std::string("Failed to open output file: ") + path);
    if (showProgress)
        printFlushed(progressLine(data.size(), data.size(), cFullSpeed));
    return 0;
}

int usage(int exitCode)
{
    printFlushed("Usage: sunxi-fel [-p] version\n"
                 "       sunxi-fel [-p] spiflash-write address file\n"
                 "       sunxi-fel [-p] spiflash-read address length file\n"
                 "A stand-in that writes into a file. Its faults are set by QUORVEL_FLASH_* variables.\n");
    return exitCode;
}

} // namespace

int main(int argc, char** argv)
{
    bool showProgress = false;
    std::vector<const char*> words;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "-p") == 0 || std::strcmp(argv[i], "--progress") == 0)
            showProgress = true;
        else if (std::strcmp(argv[i], "-h") == 0 || std::strcmp(argv[i], "--help") == 0)
            return usage(EXIT_SUCCESS);
        else
            words.push_back(argv[i]);
    }
    if (words.empty())
        return usage(EXIT_SUCCESS);
    const std::string command = words.front();
    const bool writes = command == "spiflash-write" && words.size() == 3;
    const bool reads = command == "spiflash-read" && words.size() == 4;
    if (!writes && !reads && command != "version")
        return fail(cExitFailure, "Invalid command " + command);

    const Behaviour behaviour = Behaviour::read();
    if (const int exitCode = openDevice(behaviour))
        return exitCode;
    if (writes)
        return spiFlashWrite(words[1], words[2], showProgress, behaviour);
    if (reads)
        return spiFlashRead(words[1], words[2], words[3], showProgress, behaviour);
    printFlushed(
        "AWUSBFEX soc=00001663(F1C100s) 00000001 ver=0001 44 08 scratchpad=00007e00 00000000 00000000\n");
    return EXIT_SUCCESS;
}
