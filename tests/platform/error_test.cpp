#include "platform/error.h"

#include <cerrno>
#include <cstring>
#include <map>

#include <gtest/gtest.h>

using platform::Error;
using platform::FileAction;

TEST(Errors, CarryTheMacsNumbers) {
    const std::map<int, int> macNumbers{
        {EPERM, 1},      {ENOENT, 2},        {EIO, 5},      {EACCES, 13},    {EBUSY, 16},
        {EEXIST, 17},    {EXDEV, 18},        {ENOTDIR, 20}, {EISDIR, 21},    {EINVAL, 22},
        {ETXTBSY, 26},   {EFBIG, 27},        {ENOSPC, 28},  {EROFS, 30},     {EDEADLK, 11},
        {EAGAIN, 35},    {ENOTSUP, 45},      {ELOOP, 62},   {ETIMEDOUT, 60}, {ENAMETOOLONG, 63},
        {ENOTEMPTY, 66}, {EHOSTUNREACH, 65}, {EDQUOT, 69},  {ESTALE, 70},    {ENOSYS, 78},
        {EOVERFLOW, 84}, {EILSEQ, 92},       {ENODATA, 96}, {EMULTIHOP, 95}};
    for (const auto& [host, mac] : macNumbers)
        EXPECT_EQ(platform::macErrno(host), mac) << std::strerror(host);
}

TEST(Errors, NoTwoCausesShareANumberExceptAsAnInputOutputError) {
    std::map<int, int> hostOf;
    for (int host = 1; host < 200; ++host) {
        const int mac = platform::macErrno(host);
        const auto [known, isNew] = hostOf.emplace(mac, host);
        EXPECT_TRUE(isNew || mac == EIO) << host << " and " << known->second << " are both " << mac;
    }
}

TEST(Errors, SayWhatWasDoneAndWhy) {
    struct Case {
        FileAction action;
        int host;
        int cocoa;
        int posix;
    };
    const Case cases[]{{FileAction::remove, ENOENT, 4, 2},    {FileAction::move, ENOENT, 4, 2},
                       {FileAction::write, ENOENT, 4, 2},     {FileAction::read, ENOENT, 260, 2},
                       {FileAction::remove, EACCES, 513, 13}, {FileAction::move, EPERM, 513, 1},
                       {FileAction::read, EACCES, 257, 13},   {FileAction::read, EPERM, 257, 1},
                       {FileAction::move, EEXIST, 516, 17},   {FileAction::move, ENOTDIR, 512, 20},
                       {FileAction::write, ENOSPC, 640, 28},  {FileAction::remove, EROFS, 642, 30},
                       {FileAction::remove, EBUSY, 512, 16},  {FileAction::remove, ENOTEMPTY, 512, 66},
                       {FileAction::move, EXDEV, 512, 18}};
    for (const Case& c : cases) {
        const Error error = platform::fileError(c.action, c.host, "x.txt");
        EXPECT_EQ(error.domain, platform::cocoaDomain);
        EXPECT_EQ(error.code, c.cocoa) << std::strerror(c.host);
        ASSERT_TRUE(error.underlying);
        EXPECT_EQ(error.underlying->domain, platform::posixDomain);
        EXPECT_EQ(error.underlying->code, c.posix);
        EXPECT_NE(error.description.find("x.txt"), std::string::npos);
        EXPECT_NE(error.description.find(error.underlying->description), std::string::npos);
    }
}
