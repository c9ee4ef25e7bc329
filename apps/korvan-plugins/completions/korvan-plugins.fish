# Completion of korvan-plugins for fish.

set -l commands list info menu edit run enable disable state blocklist updates watch listen send unpack compare-versions demo
complete -c korvan-plugins -l folder -x -a '(__fish_complete_directories)' -d 'A plug-in folder'
complete -c korvan-plugins -l support-dir -x -a '(__fish_complete_directories)' -d 'The support folder of the application'
complete -c korvan-plugins -l defaults -r -d "The file of the user's settings"
complete -c korvan-plugins -l default -x -d 'One setting for this call'
complete -c korvan-plugins -l safe-mode -d 'Load every plug-in disabled'
complete -c korvan-plugins -l resources -x -a '(__fish_complete_directories)' -d 'The resources of the application'
complete -c korvan-plugins -l host-version -x -d 'The version of the application'
complete -c korvan-plugins -l blocklist-url -x -d 'Where the list of the vendor is fetched'
complete -c korvan-plugins -l json -d 'Print one JSON document'
complete -c korvan-plugins -s h -l help -d 'Show the options'
complete -c korvan-plugins -l version -d 'Show the version'

set -l none "not __fish_seen_subcommand_from $commands"
complete -c korvan-plugins -f -n $none -a list -d 'List the installed plug-ins'
complete -c korvan-plugins -f -n $none -a info -d 'Show one plug-in'
complete -c korvan-plugins -f -n $none -a menu -d 'Show the plug-ins menu'
complete -c korvan-plugins -f -n $none -a edit -d 'Open a plug-in in the editor'
complete -c korvan-plugins -f -n $none -a run -d 'Run a command and show what it logs'
complete -c korvan-plugins -f -n $none -a enable -d 'Enable plug-ins'
complete -c korvan-plugins -f -n $none -a disable -d 'Disable plug-ins'
complete -c korvan-plugins -f -n $none -a state -d 'Show what is remembered of the plug-ins'
complete -c korvan-plugins -f -n $none -a blocklist -d 'The versions of plug-ins that do not work'
complete -c korvan-plugins -f -n $none -a updates -d 'Newer versions of the plug-ins'
complete -c korvan-plugins -f -n $none -a watch -d 'Reload on changes of the plug-ins and tell what changed'
complete -c korvan-plugins -f -n $none -a listen -d 'Show what is sent to a message port'
complete -c korvan-plugins -f -n $none -a send -d 'Send a text to a message port'
complete -c korvan-plugins -f -n $none -a unpack -d 'Unpack an archive, with nothing of it outside the folder'
complete -c korvan-plugins -f -n $none -a compare-versions -d 'Tell which of two versions is newer'
complete -c korvan-plugins -f -n $none -a demo -d 'Show the library at work on the example plug-ins'

complete -c korvan-plugins -f -n '__fish_seen_subcommand_from blocklist' -a 'show update'
complete -c korvan-plugins -f -n '__fish_seen_subcommand_from updates' -a 'check download install clear'
complete -c korvan-plugins -n '__fish_seen_subcommand_from updates' -l all -x -a 'latest compatible' -d 'All updates of a kind'

set -l run '__fish_seen_subcommand_from run'
complete -c korvan-plugins -n $run -l standalone -r -d 'A file of bare statements to run instead'
complete -c korvan-plugins -n $run -l handler -x -d 'Handler key to run'
complete -c korvan-plugins -n $run -l document -r -d 'Document to work on'
complete -c korvan-plugins -n $run -l context -x -d 'Further keys of the context'
complete -c korvan-plugins -n $run -l wait -x -d 'Longest wait for a command that stays running'
complete -c korvan-plugins -n $run -l dump-document -r -d 'Where to write the document afterwards'
