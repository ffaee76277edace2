#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# A CUPS scheduler of a test's own, in a folder of its own: its own
# configuration, spool, logs and local socket; no system service is touched.
#
#   private-cups.sh start <folder>   start it and add the queues below; prints
#                                    the socket to put in CUPS_SERVER
#   private-cups.sh stop <folder>    stop it
#
# Queues, all with the CUPS-PDF driver (its PPD, told to make copies as
# pages, so that each copy shows in the PDF):
#   Fiscorda_A4       A4 paper; every job comes out as <folder>/out/job-<id>.pdf
#   Fiscorda_Letter   Letter paper only
#   Fiscorda_Ferma    A4; while <folder>/out/stop exists the backend stops the
#                     queue in the middle of the job (the job stays queued)
# The backend is this folder's pdf-out, which does what the cups-pdf backend
# does (Ghostscript turns the driver's PostScript into a PDF) but writes into
# the test's folder: cups-pdf itself must run as root and writes where the
# system's /etc/cups/cups-pdf.conf says.
set -eu
cmd=$1
dir=$(cd "$2" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
sock="$dir/cups.sock"

stop() {
  if [ -f "$dir/cupsd.pid" ]; then
    pid=$(cat "$dir/cupsd.pid")
    kill "$pid" 2>/dev/null || true
    # Gone before the folder is: it writes its state on the way out.
    i=0
    # (A zombie waiting for its reaper has gone too.)
    while [ $i -lt 100 ]; do
      state=$(ps -o stat= -p "$pid" 2>/dev/null || true)
      case "$state" in "" | Z*) break ;; esac
      sleep 0.1; i=$((i + 1))
    done
    rm -f "$dir/cupsd.pid"
  fi
}

if [ "$cmd" = stop ]; then stop; exit 0; fi

cupsd=$(command -v cupsd || echo /usr/sbin/cupsd)
[ -x "$cupsd" ] || { echo "cupsd is not installed (apt install cups)" >&2; exit 1; }
ppd=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
[ -f "$ppd" ] || { echo "the CUPS-PDF driver is not installed (apt install printer-driver-cups-pdf)" >&2; exit 1; }
command -v gs >/dev/null || { echo "Ghostscript is not installed (apt install ghostscript)" >&2; exit 1; }

# The scheduler drops to the user lp for filters and backends when it runs as
# root: everything it reads or writes must be open to that user.
chmod 755 "$dir"
mkdir -p "$dir/spool" "$dir/tmp" "$dir/cache" "$dir/state" "$dir/log" "$dir/bin/backend" "$dir/out" "$dir/ppd"
chmod 777 "$dir/out" "$dir/tmp"
for d in filter daemon cgi-bin driver monitor notifier; do
  [ -e "/usr/lib/cups/$d" ] && ln -sfn "/usr/lib/cups/$d" "$dir/bin/$d"
done
cat > "$dir/bin/backend/pdf-out" <<'BACKEND'
#!/bin/sh
# Backend: pdf-out:<folder>. Without arguments, says what it is.
if [ $# -eq 0 ]; then echo 'file pdf-out "Unknown" "PDF into a folder"'; exit 0; fi
out=${DEVICE_URI#pdf-out:}
if [ -e "$out/stop" ]; then
  echo "ERROR: the queue stops in the middle of the job" >&2
  exit 4 # CUPS_BACKEND_STOP: the queue stops, the job is kept
fi
umask 022
input=-
[ $# -ge 6 ] && input=$6
gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=pdfwrite -sOutputFile="$out/job-$1.pdf.part" "$input" &&
  mv "$out/job-$1.pdf.part" "$out/job-$1.pdf"
BACKEND
chmod 755 "$dir/bin/backend/pdf-out"
{ cat "$ppd"; echo '*cupsManualCopies: True'; } > "$dir/ppd/cups-pdf.ppd"

user=$(id -un)
cat > "$dir/cups-files.conf" <<CONF
ServerRoot $dir
ServerBin $dir/bin
DataDir /usr/share/cups
DocumentRoot /usr/share/cups/doc-root
RequestRoot $dir/spool
TempDir $dir/tmp
CacheDir $dir/cache
StateDir $dir/state
AccessLog $dir/log/access_log
ErrorLog $dir/log/error_log
PageLog $dir/log/page_log
FileDevice No
SystemGroup root $(id -gn)
CONF
cat > "$dir/cupsd.conf" <<CONF
Listen $sock
Browsing No
LogLevel warn
DefaultAuthType None
WebInterface No
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
CONF
stop
"$cupsd" -f -c "$dir/cupsd.conf" -s "$dir/cups-files.conf" >"$dir/log/cupsd.out" 2>&1 &
echo $! > "$dir/cupsd.pid"
export CUPS_SERVER="$sock"
i=0
until lpstat -r >/dev/null 2>&1; do
  i=$((i + 1))
  if [ $i -gt 100 ] || ! kill -0 "$(cat "$dir/cupsd.pid")" 2>/dev/null; then
    echo "the scheduler did not start:" >&2
    cat "$dir/log/cupsd.out" "$dir/log/error_log" 2>/dev/null | tail -5 >&2
    stop
    exit 1
  fi
  sleep 0.1
done
add() { # name, paper, output folder
  n=0
  until lpadmin -p "$1" -E -v "pdf-out:$3" -P "$dir/ppd/cups-pdf.ppd" -o "PageSize=$2" \
      -o printer-error-policy=stop-printer >>"$dir/log/lpadmin.out" 2>&1; do
    n=$((n + 1))
    [ $n -lt 5 ] || { echo "lpadmin could not add $1:" >&2; tail -3 "$dir/log/lpadmin.out" >&2; stop; exit 1; }
    sleep 0.5
  done
}
add Fiscorda_A4 A4 "$dir/out"
add Fiscorda_Letter Letter "$dir/out"
mkdir -p "$dir/out-ferma" && chmod 777 "$dir/out-ferma"
add Fiscorda_Ferma A4 "$dir/out-ferma"
echo "$sock"
