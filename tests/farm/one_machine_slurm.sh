# A Slurm of one machine in a folder of its own, sourced by bash: own configuration, ports, key and
# state; nothing of the machine's own Slurm, if there is one, is read or written.
#   start_slurm FOLDER   sets SLURM_CONF; where that cannot be, says why and returns 1
#   stop_slurm           ends every job and daemon; fails when a process is left
# No daemon outlives slurm_seconds, whatever becomes of the shell that started it.
# shellcheck shell=bash
slurm_seconds=170
slurm_daemons=()

slurm_processes() {
  local file
  for file in /proc/[0-9]*/environ; do
    tr '\0' '\n' 2>/dev/null <"$file" | grep -qxF "SLURM_CONF=$SLURM_CONF" || continue
    file=${file%/environ}
    file=${file#/proc/}
    [ "$file" = $$ ] || [ "$file" = "$BASHPID" ] || echo "$file"
  done
}

slurm_daemon() {
  SLURM_CONF=$slurm/slurm.conf timeout "$slurm_seconds" "$@" >"$slurm/${1##*/}.log" 2>&1 &
  slurm_daemons+=($!)
}

# within SECONDS COMMAND...: tries the command until it succeeds.
within() {
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    ((SECONDS < end)) || return 1
    sleep 0.2
  done
}

slurm_is_idle() { [ "$(sinfo -h -o %t 2>/dev/null)" = idle ]; }

start_slurm() {
  slurm=$1
  [ "$(id -u)" = 0 ] || { echo "slurmd has to be started by root"; return 1; }
  PATH=$PATH:/usr/sbin
  local tool
  for tool in munged slurmctld slurmd sbatch; do
    command -v $tool >/dev/null || { echo "$tool is not installed"; return 1; }
  done
  mkdir -p "$slurm/munge" "$slurm/state" "$slurm/spool"
  chmod 711 "$slurm" "$slurm/munge"
  (umask 077 && head -c 128 /dev/urandom >"$slurm/munge/key")
  slurm_daemon munged --foreground --force --socket="$slurm/munge/socket" \
    --key-file="$slurm/munge/key" --pid-file="$slurm/munge/pid" \
    --log-file="$slurm/munge/log" --seed-file="$slurm/munge/seed"

  local ports host
  host=$(hostname -s)
  ports=$(python3 -c 'import socket
taken = [socket.create_server(("127.0.0.1", 0)) for _ in range(2)]
print(*[each.getsockname()[1] for each in taken])')
  cat >"$slurm/slurm.conf" <<END
ClusterName=one_machine
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=${ports% *}
SlurmdPort=${ports#* }
CommunicationParameters=NoInAddrAny,NoCtldInAddrAny
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
CredType=cred/munge
AuthInfo=socket=$slurm/munge/socket
SlurmctldPidFile=$slurm/slurmctld.pid
SlurmdPidFile=$slurm/slurmd.pid
StateSaveLocation=$slurm/state
SlurmdSpoolDir=$slurm/spool
MailProg=/bin/true
MpiDefault=none
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerType=sched/builtin
SlurmdParameters=config_overrides
KillWait=5
NodeName=farm NodeHostname=$host NodeAddr=127.0.0.1 CPUs=4 RealMemory=16000
PartitionName=render Nodes=farm Default=YES State=UP
END
  within 10 test -S "$slurm/munge/socket" || { echo "munged does not start"; return 1; }
  export SLURM_CONF=$slurm/slurm.conf
  slurm_daemon slurmctld -D -c
  slurm_daemon slurmd -D -N farm
  within 20 slurm_is_idle && return
  echo "slurmctld and slurmd do not find together on this machine; they say:"
  tail -n 5 "$slurm"/slurm*.log
  return 1
}

slurm_is_gone() { [ -z "$(slurm_processes)" ]; }

# shellcheck disable=SC2046  # one word for each process
stop_slurm() {
  [ -z "${SLURM_CONF:-}" ] || timeout 10 scancel --user=root --signal=KILL --full 2>/dev/null
  kill "${slurm_daemons[@]}" 2>/dev/null
  wait "${slurm_daemons[@]}" 2>/dev/null
  [ -n "${SLURM_CONF:-}" ] || return 0
  within 10 slurm_is_gone || { kill -KILL $(slurm_processes); return 1; }
}
