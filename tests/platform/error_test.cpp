#include "platform/error.h"

#include "tests/support/codes.h"

#include <cerrno>
#include <cstring>

#include <gtest/gtest.h>

using platform::FileAction;

TEST(Errors, SayWhatWasDoneAndWhyInTheMacsNumbers) {
    const struct {
        FileAction action;
        int host;
        const char* codes;
    } cases[]{
        {FileAction::remove, ENOENT, "4:2"},    {FileAction::read, ENOENT, "260:2"},
        {FileAction::remove, EACCES, "513:13"}, {FileAction::move, EPERM, "513:1"},
        {FileAction::read, EPERM, "257:1"},     {FileAction::move, EEXIST, "516:17"},
        {FileAction::write, ENOSPC, "640:28"},  {FileAction::remove, EROFS, "642:30"},
        {FileAction::remove, EBUSY, "512:16"},  {FileAction::remove, ENOTEMPTY, "512:66"},
        {FileAction::move, EXDEV, "512:18"},    {FileAction::read, ELOOP, "512:62"},
        {FileAction::write, EDQUOT, "640:69"},  {FileAction::read, ENAMETOOLONG, "512:63"},
        {FileAction::read, EAGAIN, "512:35"},   {FileAction::read, 199, "512:5"}}; // a number of nobody's
    for (const auto& [action, host, expected] : cases) {
        const platform::Error error = platform::fileError(action, host, "x.txt");
        EXPECT_EQ(codes(error), expected) << std::strerror(host);
        EXPECT_NE(error.description.find("x.txt"), std::string::npos);
        EXPECT_NE(error.description.find(error.underlying->description), std::string::npos);
    }
}
