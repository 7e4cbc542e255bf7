# Sourced by the scripts: installs the packages of dependencies.txt that are missing.

missing_packages() {
    local name rest
    while read -r name rest; do
        case "$name" in
            '' | '#'*) continue ;;
        esac
        dpkg-query -W -f '${Status}' "$name" 2>/dev/null | grep -q 'install ok installed' ||
            printf '%s ' "$name"
    done < dependencies.txt
}

install_dependencies() {
    local missing as_root=()
    missing=$(missing_packages)
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    echo "Installing: $missing"
    "${as_root[@]}" apt-get update -qq
    # shellcheck disable=SC2086
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq $missing >/dev/null
}
