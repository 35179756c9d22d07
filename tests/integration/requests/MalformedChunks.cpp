#include "RawRequest.h"

using namespace std::string_view_literals;

std::vector<RawRequest> malformedChunks()
{
    const std::string manyDigits(100, 'f');
    const std::string muchTooLong(200'000, 'a');
    return {
        {"size_not_hexadecimal", chunks("g\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_empty", chunks("\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_negative", chunks("-5\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_with_plus", chunks("+5\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_with_0x", chunks("0x5\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_after_blank", chunks(" 5\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_before_blank", chunks("5 \r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_with_nul", chunks("5\0\r\nhello\r\n0\r\n\r\n"sv), {400}},
        {"size_with_underscore", chunks("1_0\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_in_quotes", chunks("\"5\"\r\nhello\r\n0\r\n\r\n"), {400}},
        {"size_over_64_bits", chunks("10000000000000000\r\nhello\r\n0\r\n\r\n"), {400, 413}},
        {"size_wraps_to_5", chunks("10000000000000005\r\nhello\r\n0\r\n\r\n"), {400, 413}},
        {"size_of_many_digits", chunks(manyDigits + "\r\nhello\r\n"), {400, 413}},
        {"size_without_end", chunks(muchTooLong), {400, 413, closed}},
        {"only_an_extension", chunks(";a=b\r\nhello\r\n0\r\n\r\n"), {400}},
        {"data_longer_than_size", chunks("3\r\nhello\r\n0\r\n\r\n"), {400}},
        {"data_shorter_than_size", chunks("7\r\nhello\r\n0\r\n\r\n"), {400}},
        {"no_line_end_after_data", chunks("5\r\nhello0\r\n\r\n"), {400}},
        {"bare_cr_after_data", chunks("5\r\nhello\rX0\r\n\r\n"), {400}},
        {"second_size_not_hexadecimal", chunks("5\r\nhello\r\nxyz\r\n\r\n"), {400}},
        {"trailer_without_colon", chunks("0\r\nnonsense\r\n\r\n"), {400}},
        {"trailer_too_long", chunks("0\r\nX: " + muchTooLong + "\r\n\r\n"), {431}},
    };
}
