#include "RawRequest.h"

using namespace std::string_view_literals;

std::vector<RawRequest> malformedRequestLines()
{
    const std::string tooLong(40'000, 'a');
    const std::string muchTooLong(200'000, 'a');
    const auto getWithArguments = [](int count) {
        std::string text = "GET /?a";
        for (int i = 1; i < count; ++i)
            text += "&a";
        return line(text + " HTTP/1.1");
    };

    return {
        {"no_version", line("GET /"), {400}},
        {"method_only", line("GET"), {400, closed}},
        {"method_and_blank", line("GET "), {400, closed}},
        {"blank_only", line(" "), {400, closed}},
        {"blank_before_method", line(" GET / HTTP/1.1"), {400, closed}},
        {"two_blanks_before_target", line("GET  / HTTP/1.1"), {400}},
        {"two_blanks_before_version", line("GET /  HTTP/1.1"), {400, closed}},
        {"blank_after_version", line("GET / HTTP/1.1 "), {400}},
        {"tab_after_version", line("GET / HTTP/1.1\t"), {400}},
        {"tab_for_blank", line("GET\t/\tHTTP/1.1"), {400, closed}},
        {"tab_in_target", line("GET /a\tb HTTP/1.1"), {400}},
        {"blank_in_target", line("GET /a b HTTP/1.1"), {400, closed}},
        {"nul_in_method", line("GE\0T / HTTP/1.1"sv), {400}},
        {"nul_in_target", line("GET /a\0b HTTP/1.1"sv), {400}},
        {"nul_at_start_of_target", line("GET \0/ HTTP/1.1"sv), {400}},
        {"nul_in_version", line("GET / HTTP/1.1\0"sv), {400}},
        {"nul_before_everything", line("\0GET / HTTP/1.1"sv), {400}},
        {"control_byte_in_target", line("GET /\x01 HTTP/1.1"), {400}},
        {"escape_in_target", line("GET /\x1b[31m HTTP/1.1"), {400}},
        {"delete_in_target", line("GET /\x7f HTTP/1.1"), {400}},
        {"bare_cr_in_target", line("GET /\rX HTTP/1.1"), {400}},
        {"bare_cr_after_line", "GET / HTTP/1.1\rHost: localhost\r\n\r\n", {400, closed}},
        {"bare_lf_after_line", "GET / HTTP/1.1\nHost: localhost\r\n\r\n", {400}},
        {"bare_lf_everywhere", "GET / HTTP/1.1\nHost: localhost\n\n", {400}},
        {"method_with_colon", line("GET: / HTTP/1.1"), {400}},
        {"method_with_brackets", line("(GET) / HTTP/1.1"), {400}},
        {"method_with_slash", line("GET/1 / HTTP/1.1"), {400}},
        {"method_in_quotes", line("\"GET\" / HTTP/1.1"), {400}},
        {"method_with_at", line("G@T / HTTP/1.1"), {400}},
        {"method_with_comma", line("GET,POST / HTTP/1.1"), {400}},
        {"method_not_ascii", line("G\xc3\x89T / HTTP/1.1"), {400}},
        {"version_in_lower_case", line("GET / http/1.1"), {400}},
        {"version_without_minor", line("GET / HTTP/1"), {400}},
        {"version_with_long_minor", line("GET / HTTP/1.10"), {400}},
        {"version_with_long_major", line("GET / HTTP/01.1"), {400}},
        {"version_with_comma", line("GET / HTTP/1,1"), {400}},
        {"version_with_letters", line("GET / HTTP/x.y"), {400}},
        {"version_negative", line("GET / HTTP/-1.1"), {400}},
        {"version_of_another_protocol", line("GET / ICAP/1.0"), {400}},
        {"version_glued_to_target", line("GET /HTTP/1.1"), {400}},
        {"version_0_9", line("GET / HTTP/0.9"), {505}},
        {"version_2_0", line("GET / HTTP/2.0"), {505}},
        {"version_3_0", line("GET / HTTP/3.0"), {505}},
        {"http_2_preface", "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", {505}},
        {"http_0_9", "GET /\r\n", {400}},
        {"tls_hello", "\x16\x03\x01\x02 hello\r\n\r\n", {400, closed}},
        {"ssh_banner", "SSH-2.0-OpenSSH_9.2\r\n\r\n", {400, closed}},
        {"smtp", "EHLO localhost\r\n\r\n", {400, closed}},
        {"an_answer", "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n", {400, closed}},
        {"json_without_http", "{\"type\":\"request\"}\r\n\r\n", {400, closed}},
        {"binary", "\xff\xfe\xfd \x80 \x81\r\n\r\n", {400, closed}},
        {"target_too_long", line("GET /" + tooLong + " HTTP/1.1"), {414}},
        {"target_much_too_long", line("GET /" + muchTooLong + " HTTP/1.1"), {414}},
        {"method_much_too_long", line(muchTooLong + " / HTTP/1.1"), {414}},
        {"line_without_end", "GET /" + muchTooLong, {414}},
        {"too_many_arguments", getWithArguments(300), {414}},
        {"far_too_many_arguments", getWithArguments(3000), {414}},
    };
}
