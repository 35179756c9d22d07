#include "RawRequest.h"

using namespace std::string_view_literals;

std::vector<RawRequest> malformedFields()
{
    const std::string tooLong(40'000, 'a');
    const std::string muchTooLong(200'000, 'a');
    std::string tooMany;
    for (int i = 0; i < 20'000; ++i)
        tooMany += "a:\r\n";
    std::string manyCookies = "Cookie: a=b";
    for (int i = 0; i < 5000; ++i)
        manyCookies += ";a=";

    return {
        {"no_host", only("X: a"), {400}},
        {"no_field_at_all", "GET / HTTP/1.1\r\n\r\n", {400}},
        {"two_hosts", field("Host: elsewhere"), {400}},
        {"two_equal_hosts", field("Host: localhost"), {400}},
        {"two_hosts_in_1_0", only("Host: a\r\nHost: b", "HTTP/1.0"), {400}},
        {"two_hosts_in_other_case", field("hOST: localhost"), {400}},
        {"host_with_blank", only("Host: local host"), {400}},
        {"host_with_user", only("Host: user@localhost"), {400}},
        {"host_with_path", only("Host: localhost/path"), {400}},
        {"host_with_backslash", only("Host: localhost\\x"), {400}},
        {"host_with_scheme", only("Host: http://localhost"), {400}},
        {"host_list", only("Host: localhost, elsewhere"), {400}},
        {"host_with_angle_brackets", only("Host: <localhost>"), {400}},
        {"host_not_ascii", only("Host: \xc3\xa9.example"), {400}},
        {"host_folded", only("Host:\r\n localhost"), {400}},
        {"blank_before_colon", field("X : a"), {400}},
        {"tab_before_colon", field("X\t: a"), {400}},
        {"blank_before_colon_of_host", only("Host : localhost"), {400}},
        {"blank_in_name", field("X Y: a"), {400}},
        {"blank_before_first_name", only(" Host: localhost"), {400}},
        {"tab_before_first_name", only("\tX: a\r\nHost: localhost"), {400}},
        {"folded_value", field("X: a\r\n b"), {400}},
        {"folded_with_tab", field("X: a\r\n\tb"), {400}},
        {"folded_blank_line", field("X: a\r\n \r\nY: b"), {400}},
        {"folded_twice", field("X: a\r\n b\r\n c"), {400}},
        {"folded_length", field("Content-Length: 0\r\n 5"), {400}},
        {"folded_into_length", field("Content-Lengt: 5\r\n h"), {400}},
        {"folded_encoding", field("Transfer-Encoding:\r\n chunked", "0\r\n\r\n"), {400}},
        {"no_colon", field("nonsense"), {400}},
        {"no_colon_in_first_line", only("nonsense\r\nHost: localhost"), {400}},
        {"empty_name", field(": a"), {400}},
        {"name_with_brackets", field("X(Y): a"), {400}},
        {"name_with_slash", field("X/Y: a"), {400}},
        {"name_with_comma", field("X,Y: a"), {400}},
        {"name_in_quotes", field("\"X\": a"), {400}},
        {"name_with_at", field("X@Y: a"), {400}},
        {"name_not_ascii", field("X\xc3\xa9: a"), {400}},
        {"name_with_control_byte", field("X\x01: a"), {400}},
        {"name_with_nul", field("X\0Y: a"sv), {400}},
        {"name_with_cr", field("X\rY: a"), {400}},
        {"value_with_nul", field("X: a\0b"sv), {400}},
        {"value_of_nul", field("X: \0"sv), {400}},
        {"value_with_bell", field("X: a\x07"), {400}},
        {"value_with_escape", field("X: \x1b[31m"), {400}},
        {"value_with_delete", field("X: a\x7f"), {400}},
        {"value_with_vertical_tab", field("X: a\vb"), {400}},
        {"value_with_form_feed", field("X: a\fb"), {400}},
        {"value_with_cr", field("X: a\rb"), {400}},
        {"value_with_cr_and_field", field("X: a\rContent-Length: 40"), {400}},
        {"value_ending_with_cr", field("X: a\r"), {400}},
        {"bare_lf_between_fields", field("X: a\nY: b"), {400}},
        {"bare_lf_before_length", field("X: a\nContent-Length: 40"), {400}},
        {"bare_lf_ends_head", "GET / HTTP/1.1\r\nHost: localhost\r\n\n", {400}},
        {"lf_cr_for_cr_lf", "GET / HTTP/1.1\n\rHost: localhost\n\r\n\r", {400, closed}},
        {"cr_cr_lf", field("X: a\r\r\nY: b"), {400}},
        {"nul_hides_length", field("Content-Length: 0\0005"sv), {400}},
        {"nul_before_colon_of_length", field("Content-Length\0: 5"sv), {400}},
        {"fields_too_long", field("X: " + tooLong), {431}},
        {"fields_much_too_long", field("X: " + muchTooLong), {431}},
        {"name_much_too_long", field(muchTooLong + ": a"), {431}},
        {"fields_too_many", field(tooMany + "X: a"), {431}},
        {"cookies_too_many", field(manyCookies), {431, closed}},
        {"cookie_of_a_quote", field("Cookie: a=\""), {431}}, // the library misreads it
        {"field_without_end", only("X: " + muchTooLong), {431}},
    };
}
