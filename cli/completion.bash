# Completion of the command webi18n for bash: subcommands, options, and the names that the data holds, which the command
# itself tells. It needs nothing beside bash.

# The options of the command, then those of the subcommand $1.
_webi18n_options()
{
    echo --help --data --config --set --definitions --currencies --charsets --charset-lists --messages --mapping --json --log --version
    case "$1" in
        explain | locales) echo --language ;;
        locale) echo --user ;;
        parse) echo --locale --user --expect ;;
        currencies) echo --locale --language ;;
        currency) echo --symbol --locale --language ;;
        charset) echo --supported --preferred ;;
        encode) echo --charset --unencodable ;;
        sort) echo --sort --strength --null --memory ;;
        keys) echo --sort --strength --verify ;;
        compare) echo --sort --strength ;;
        java) echo --ui-language ;;
    esac
}

# What an option is given, a word a line; FILES and FOLDERS stand for those of the disk. Fails for what takes no value.
# Behind the option stands the command with the options by which it finds its data.
_webi18n_values()
{
    local option="$1"
    shift
    case "$option" in
        --data) printf '%s\n' FOLDERS none ;;
        --messages) echo FOLDERS ;;
        --config | --definitions | --currencies | --charsets | --charset-lists | --mapping | --verify) echo FILES ;;
        --set) printf '%s=\n' Localization/Allowed{LocalesFile,Locales,Languages} ;;
        --log) printf '%s\n' information minor-warning warning ;;
        --locale) "$@" locales | cut -f 1 ;;
        --language | --ui-language) "$@" locales | cut -f 3 | sort -u ;;
        --user)
            printf '%s=\n' currencyTag dateFormat timeFormat decimalSeparator thousandsSeparator dateSeparator timeSeparator
            printf '%s\n' dateOrder={mdy,dmy,ymd} 24hours={true,false}
            ;;
        --expect) printf '%s\n' date time datetime timestamp year-month month-day hour-minute ;;
        --supported | --preferred) "$@" charset-lists | sed -E 's/^name: ([^\t]*).*/\1/' ;;
        --charset) "$@" charsets | sed -E 's/^definition: ([^\t]*).*/\1/' ;;
        --unencodable) printf '%s\n' reference substitute error ;;
        --sort) printf '%s\n' und binary && "$@" locales | cut -f 3 | sort -u ;;
        --strength) printf '%s\n' 0 1 2 4 8 16 ;;
        --symbol | --memory) ;;
        *) return 1 ;;
    esac
}

# What a subcommand is given beside its options, a word a line.
_webi18n_arguments()
{
    local subcommand="$1"
    shift
    case "$subcommand" in
        locale | java) "$@" locales | cut -f 1 ;;
        currency) "$@" currencies | sed -nE 's/^tag: "([^"]*)".*/\1/p' ;;
        sort | keys | check) echo FILES ;;
    esac
}

_webi18n_subcommands()
{
    printf '%s\n' explain locales locale languages data-format parse parse-xml currencies currency charsets charset-lists \
        charset encode sort keys compare java check
}

# Those of the given words that begin with $1 become the answer.
_webi18n_offer()
{
    local begin="$1" word files=()
    COMPREPLY=()
    while IFS= read -r word; do
        case "$word" in
            FILES) mapfile -t files < <(compgen -f -- "$begin") ;;
            FOLDERS) mapfile -t files < <(compgen -d -- "$begin") ;;
            "$begin"*) COMPREPLY+=("$word") ;;
        esac
    done
    if ((${#files[@]})); then
        compopt -o filenames 2>/dev/null
        COMPREPLY+=("${files[@]}")
    fi
    # A value follows the sign, no blank.
    [[ ${#COMPREPLY[@]} != 1 || ${COMPREPLY[0]} != *= ]] || compopt -o nospace 2>/dev/null
}

# bash replaces only what stands behind the last of its own word breaks, such as the colon of loc:ja-jp.
_webi18n_trim()
{
    local current="$1" sign behind index
    for sign in : =; do
        if [[ $COMP_WORDBREAKS == *"$sign"* && $current == *"$sign"* ]]; then
            behind="${current%"${current##*"$sign"}"}"
            for index in "${!COMPREPLY[@]}"; do
                COMPREPLY[index]="${COMPREPLY[index]#"$behind"}"
            done
            current="${current#"$behind"}"
        fi
    done
}

_webi18n()
{
    # Split here, because bash takes colons and equal signs for words of their own.
    local line="${COMP_LINE:0:COMP_POINT}" words current subcommand="" expects="" ended="" word
    read -ra words <<<"$line"
    [[ $line != *[[:space:]] ]] || words+=("")
    current="${words[-1]}"
    local program=("${words[0]/#\~/$HOME}")
    for word in "${words[@]:1:${#words[@]}-2}"; do
        if [[ -n $expects ]]; then
            case "$expects" in
                --data | --config | --set | --definitions | --currencies | --charsets | --charset-lists | \
                    --messages)
                    program+=("$expects" "$word")
                    ;;
            esac
            expects=""
        elif [[ -n $ended ]]; then
            continue
        elif [[ $word == -- ]]; then
            ended=yes
        elif [[ $word == -* ]]; then
            # true stands for the command: whether there are values is asked, not which.
            ! _webi18n_values "$word" true >/dev/null || expects="$word"
        elif [[ -z $subcommand ]]; then
            subcommand="$word"
        fi
    done

    if [[ -n $expects ]]; then
        _webi18n_offer "$current" < <(_webi18n_values "$expects" "${program[@]}" 2>/dev/null)
    elif [[ -z $ended && $current == --*=* ]]; then
        _webi18n_offer "$current" < <(
            _webi18n_values "${current%%=*}" "${program[@]}" 2>/dev/null | grep -vE '^(FILES|FOLDERS)$' |
                sed "s|^|${current%%=*}=|"
        )
    elif [[ -z $ended && $current == -* ]]; then
        _webi18n_offer "$current" < <(_webi18n_options "$subcommand" | tr ' ' '\n')
    elif [[ -z $subcommand ]]; then
        _webi18n_offer "$current" < <(_webi18n_subcommands)
    else
        _webi18n_offer "$current" < <(_webi18n_arguments "$subcommand" "${program[@]}" 2>/dev/null)
    fi
    _webi18n_trim "$current"
}

complete -F _webi18n webi18n
