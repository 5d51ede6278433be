# Completion of cdrctl's commands, options, settings and labels for bash.

_cdrctl() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=() word i
    local settings=" Format= ReportType= Language= ReportFilter= FeatureCode= DateFormat= HeaderFormat= DNISInfo= \
ConnectChar= DigitsSuppress= DigitsLimit= ClipFileSchedule= ClipFileSize_100K= CDRDiskSpaceLimit_MB= CLIDWithName= \
LongCLIDSupport= CLIDWithCallType= SupportCallCharge= AnswerSupervision= CallFilterDuration= HospitalityRecords= \
PrefixBin= AccessBin= SuppressBin= TransferType= IPAddress= UserName= Password= DestFolder= NumRetry= DeleteFlag= \
CompressFlag= IncludeMetricsFlag= TransferTime= TransferDayOfMonth= TransferDayOfWeek= "
    local classes="service prefix access push pushed pull"
    local options="--help --version --json --server --user --password-file --cacert --cert --key --insecure --namespace \
--timeout"
    local valued=" -s -u --server --user --password-file --cacert --cert --key --namespace --timeout --interval --count --class "
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        [[ $word == -* || $valued == *" ${COMP_WORDS[i - 1]} "* ]] || command+=("$word")
    done
    COMPREPLY=()
    case $previous in
    --password-file | --cacert | --cert | --key)
        compopt -o default
        return
        ;;
    --class)
        mapfile -t COMPREPLY < <(compgen -W "$classes" -- "$current")
        return
        ;;
    esac
    local words
    case "${command[*]}" in
    "") words="show set bins push statistics status $options" ;;
    show) words="$classes --describe $options" ;;
    set*)
        if [[ $previous == TransferType || ${COMP_WORDS[COMP_CWORD - 2]} == TransferType ]]; then
            words="daily weekly monthly pull no"
        else
            words="$settings --class $options"
            compopt -o nospace
        fi
        ;;
    bins) words="set $options" ;;
    "bins set") words="prefix access" ;;
    push) words="now why $options" ;;
    "push why") words="--local --remote $options" ;;
    statistics) words="--watch --interval --count $options" ;;
    *) words=$options ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "${current#=}")
}

complete -F _cdrctl cdrctl
