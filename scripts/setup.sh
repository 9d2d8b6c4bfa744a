#!/usr/bin/env bash
# Set-up of a Debian machine for Tarvo, run as root:
#   bash scripts/setup.sh main   packages, build, local PostgreSQL store, then the main job
#   bash scripts/setup.sh test   packages, build, local PostgreSQL store, then every test, on this build
#                                and on a second one with the address and undefined-behaviour sanitizers
# Each step looks at what is already there, so running it again changes nothing.
set -euo pipefail

mode=${1:-main}
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build"
run="$root/run"

# xmllint and chromium are the clients that the tests of the reports read them with.
packages=(g++ cmake ninja-build ccache pkg-config
          postgresql postgresql-client libpq-dev sqlite3 libsqlite3-dev
          libjsoncpp-dev libmxml-dev libsuitesparse-dev libboost-dev libboost-graph-dev
          libgtest-dev libgmock-dev libbenchmark-dev
          libxml2-utils chromium)

say() { printf '== %s\n' "$*"; }

install_packages() {
    local missing=() p
    for p in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
    done
    if ((${#missing[@]})); then
        say "installing ${missing[*]}"
        export DEBIAN_FRONTEND=noninteractive
        apt-get update -q
        apt-get install -y -q --no-install-recommends "${missing[@]}"
    fi
}

# build_kernel FOLDER [CMAKE OPTION...]
build_kernel() {
    local folder=$1
    shift
    say "building in $folder"
    # Objects compiled in another clone or build folder are reused: paths inside the tree are hashed
    # relative to it, and the working directory (named in the debug information) is not hashed.
    export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
    cmake -S "$root" -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
          -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@" >/dev/null
    cmake --build "$folder" -j2
}

# A local cluster that listens on loopback only, holding the database "persistency" of the user
# "tarvo" and the schema of the store. The user's password is drawn at random the first time and
# kept in a libpq password file that only root can read; the configuration file names it.
secret=/etc/xdg/tarvo/pgpass

store_password() {
    local password=
    [ -f "$secret" ] && password=$(awk -F: '$4 == "tarvo" {print $5; exit}' "$secret")
    if [ -z "$password" ]; then
        password=$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
        mkdir -p "$(dirname "$secret")"
        (umask 077; printf '*:*:*:tarvo:%s\n' "$password" > "$secret.new")
        mv "$secret.new" "$secret"
    fi
    chmod 600 "$secret"
    printf '%s' "$password"
}

prepare_store() {
    local version cluster=main status port password socket hba
    version=$(ls /usr/lib/postgresql | sort -V | tail -n 1)
    if ! pg_lsclusters -h | awk -v v="$version" -v c="$cluster" '$1 == v && $2 == c {found = 1} END {exit !found}'; then
        say "creating PostgreSQL cluster $version/$cluster"
        pg_createcluster "$version" "$cluster" >/dev/null
    fi
    if [ "$(pg_conftool -s "$version" "$cluster" show listen_addresses 2>/dev/null)" != localhost ]; then
        pg_conftool "$version" "$cluster" set listen_addresses localhost
        pg_ctlcluster "$version" "$cluster" stop 2>/dev/null || true
    fi
    status=$(pg_lsclusters -h | awk -v v="$version" -v c="$cluster" '$1 == v && $2 == c {print $4}')
    port=$(pg_lsclusters -h | awk -v v="$version" -v c="$cluster" '$1 == v && $2 == c {print $3}')
    if [ "$status" != online ]; then
        say "starting PostgreSQL cluster $version/$cluster on port $port"
        pg_ctlcluster "$version" "$cluster" start
    fi
    # The kernel reaches the server over its Unix-domain socket: no TCP, and only local processes. There
    # the server knows the connecting process's system user, so the user running this set-up signs in as
    # tarvo by that alone (peer, through the map "tarvo"): no password exchange, which costs a kernel
    # call several milliseconds. The password stays for loopback; the cluster's other users keep theirs.
    socket=$(pg_conftool -s "$version" "$cluster" show unix_socket_directories | tr -d "'" | cut -d, -f1)
    hba=$(pg_conftool -s "$version" "$cluster" show hba_file | tr -d "'")
    ident=$(pg_conftool -s "$version" "$cluster" show ident_file | tr -d "'")
    local peer="local   all             tarvo                                   peer map=tarvo"
    local changed=
    if ! grep -Fxq "$peer" "$hba"; then
        awk -v peer="$peer" '/^local[[:space:]]+all[[:space:]]+tarvo[[:space:]]/ {next}
             !done && /^local[[:space:]]/ && $3 != "postgres" {print peer; done = 1}
             {print}' "$hba" > "$hba.new"
        cat "$hba.new" > "$hba" && rm "$hba.new"
        changed=1
    fi
    if ! awk -v u="$(id -un)" '$1 == "tarvo" && $2 == u && $3 == "tarvo" {found = 1} END {exit !found}' "$ident"; then
        printf 'tarvo %s tarvo\n' "$(id -un)" >> "$ident"
        changed=1
    fi
    [ -z "$changed" ] || pg_ctlcluster "$version" "$cluster" reload
    for _ in $(seq 60); do pg_isready -q -h "$socket" -p "$port" && break; sleep 0.5; done
    pg_isready -q -h "$socket" -p "$port"

    password=$(store_password)
    local admin=(runuser -u postgres -- psql -p "$port" -v ON_ERROR_STOP=1 -qAt)
    if [ -z "$("${admin[@]}" -c "SELECT 1 FROM pg_roles WHERE rolname = 'tarvo'")" ]; then
        "${admin[@]}" -c "CREATE ROLE tarvo LOGIN CREATEDB"
    fi
    # Given on standard input, the password never shows in a process list.
    "${admin[@]}" -v password="$password" <<< "ALTER ROLE tarvo PASSWORD :'password';"
    if [ -z "$("${admin[@]}" -c "SELECT 1 FROM pg_database WHERE datname = 'persistency'")" ]; then
        "${admin[@]}" -c "CREATE DATABASE persistency OWNER tarvo"
    fi
    PGPASSFILE="$secret" psql -h "$socket" -p "$port" -U tarvo -d persistency -v ON_ERROR_STOP=1 -q \
        -c "SET client_min_messages = warning" -f "$root/subprojects/persistency/sql/postgres.sql"

    printf '[1.1]\nDatabaseHost=%s\nDatabasePort=%s\nDatabasePasswordFile=%s\n' "$socket" "$port" "$secret" \
        > /etc/xdg/tarvo/TARVO.conf
    say "store ready: database persistency on the socket in $socket, port $port, settings in /etc/xdg/tarvo/TARVO.conf"
}

main_job() {
    mkdir -p "$run"
    cd "$run"
    say "main job in $run"
    # The kernel's default case.
    "$build/src/tarvo" new 'Test2<Membrane22Rtsc>'
    local id
    id=$(cat id.txt)
    [ "$id" -ge 0 ] || { echo "new failed with $id" >&2; exit 1; }
    "$build/src/tarvo" calculate "$id"
    [ "$(cat id.txt)" = "$id" ] || { echo "calculate failed with $(cat id.txt)" >&2; exit 1; }
    # The reports read the case back from the store.
    "$build/src/tarvo" txt "$id" report
    mkdir -p xml
    "$build/src/tarvo" xml "$id" xml
    say "case $id of Test2<Membrane22Rtsc> calculated; read back from the store:"
    grep -E '^(stageCut|recovery|purity)' report.txt
    say "reports in $run: report.txt, content.xml (pack with scripts/pack_ods.py), xml/, drawing $id.svg"
}

# test_all FOLDER
test_all() {
    say "running all tests in $1"
    ctest --test-dir "$1" -j2 --output-on-failure
}

case "$mode" in
    main) install_packages; build_kernel "$build"; prepare_store; main_job ;;
    test) install_packages; build_kernel "$build"; prepare_store; test_all "$build"
          build_kernel "$root/build-sanitize" -DTARVO_SANITIZE=ON -DTARVO_BENCHMARKS=OFF
          test_all "$root/build-sanitize" ;;
    *) echo "usage: bash scripts/setup.sh main|test" >&2; exit 2 ;;
esac
