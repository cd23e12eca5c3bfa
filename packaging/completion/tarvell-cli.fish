# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later

complete -c tarvell-cli -f
complete -c tarvell-cli -n __fish_use_subcommand -a check -d 'Report everything that is wrong'
complete -c tarvell-cli -n __fish_use_subcommand -a due -d 'List what is due'
complete -c tarvell-cli -n __fish_use_subcommand -a show -d 'Show a file'
complete -c tarvell-cli -n __fish_use_subcommand -a diff -d 'Compare two data files'
complete -c tarvell-cli -n __fish_use_subcommand -a export -d 'Write every row as a file'
complete -c tarvell-cli -n __fish_use_subcommand -a history -d 'List earlier contents'
complete -c tarvell-cli -n __fish_use_subcommand -l version -d 'Show the version'
complete -c tarvell-cli -l help -d 'Show the options'

set -l trees '__fish_seen_subcommand_from check due export'
complete -c tarvell-cli -n $trees -l calfactors -x -a '(__fish_complete_directories)' -d 'Calibration data'
complete -c tarvell-cli -n $trees -l stations -x -a '(__fish_complete_directories)' -d 'Stations'
complete -c tarvell-cli -n $trees -l today -x -d 'Look as on another day'
complete -c tarvell-cli -n $trees -l within -x -a '30d 4w' -d 'Due soon means within this time'
complete -c tarvell-cli -n '__fish_seen_subcommand_from check due show diff export history' -l json -d 'Write JSON'
complete -c tarvell-cli -n '__fish_seen_subcommand_from check due show diff' -s q -l quiet -d 'Write nothing'
complete -c tarvell-cli -n '__fish_seen_subcommand_from check' -l unused -d 'Data sets that no station uses, too'
complete -c tarvell-cli -n '__fish_seen_subcommand_from show diff history' -F
complete -c tarvell-cli -n '__fish_seen_subcommand_from diff' -l bytes -d 'Compare the bytes'
complete -c tarvell-cli -n '__fish_seen_subcommand_from export' -l csv -d 'Comma-separated values'
complete -c tarvell-cli -n '__fish_seen_subcommand_from export' -l ics -d 'A calendar of the due dates'
complete -c tarvell-cli -n '__fish_seen_subcommand_from export' -s o -l output -r -F -d 'Save to this file'
