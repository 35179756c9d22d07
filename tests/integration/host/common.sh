# Shared by the scripts of this folder.
# shellcheck shell=bash

# Installs the host framework of a build outside of the tree, as FOLDER.
#   install_host BUILD FOLDER
install_host() {
    local component
    for component in host host-dev; do
        DESTDIR="$2.staged" cmake --install "$1" --component $component
    done
    mv "$2.staged/usr" "$2"
}

# Starts a display that judges what comes, and sets `display` and `display_port`.
#   start_display BUILD RECORD
start_display() {
    "$1/bin/display" --port 0 --check --record "$2" >"$2.out" &
    display=$!
    trap 'kill $display 2>/dev/null || true' EXIT
    until display_port=$(sed -n 's/^Display at .*:\([0-9]*\),.*/\1/p' "$2.out") && [ -n "$display_port" ]; do
        kill -0 $display
        sleep 0.1
    done
}

# Succeeds only if messages came, and all were right.
end_display() {
    kill $display
    wait $display
}
