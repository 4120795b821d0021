MEVDATE ; FileMan dates: year - 1700, month, day, and after a point the time without trailing zeros
 ;
TODAY() ; Today's date
 QUIT $$OFDAY(+$HOROLOG)
 ;
OFDAY(day) ; The date of a $HOROLOG day
 QUIT $ZDATE(day,"YYYYMMDD")-17000000
 ;
DAY(date) ; The $HOROLOG day of a date
 NEW days,leaps,month,year
 SET year=date\10000+1700,month=date\100#100
 SET days=$PIECE("0,31,59,90,120,151,181,212,243,273,304,334",",",month)+(date\1#100)
 IF month>2,$$LEAP(year) SET days=days+1
 SET year=year-1,leaps=year\4-(year\100)+(year\400)-(1840\4-(1840\100)+(1840\400))
 QUIT year-1840*365+leaps+days
 ;
LEAP(year) ; A leap year
 QUIT year#4=0&(year#100'=0!(year#400=0))
 ;
ADD(date,days) ; The date some days later
 QUIT $$OFDAY($$DAY(date)+days)
 ;
YEARSAGO(years) ; Today's date some years ago; 29 February becomes the 28th in other years
 NEW date
 SET date=$$TODAY-(years*10000)
 IF date#10000=229,'$$LEAP(date\10000+1700) SET date=date-1
 QUIT date
 ;
AGE(birth) ; Age in whole years today; empty without a birth date
 IF 'birth QUIT ""
 QUIT $$TODAY\10000-(birth\10000)-($$TODAY#10000<(birth#10000))
 ;
SLASHED(date) ; mm/dd/yyyy; empty for an empty date
 NEW whole
 IF 'date QUIT ""
 SET whole=date\1
 QUIT $EXTRACT(whole\100#100+100,2,3)_"/"_$EXTRACT(whole#100+100,2,3)_"/"_(whole\10000+1700)
 ;
CLOCK(date) ; hh:mm of a date with a time, 00:00 without
 NEW time
 SET time=$EXTRACT($PIECE(date,".",2)_"0000",1,4)
 QUIT $EXTRACT(time,1,2)_":"_$EXTRACT(time,3,4)
 ;
TIMED(date) ; mm/dd/yyyy@hh:mm; empty for an empty date
 IF 'date QUIT ""
 QUIT $$SLASHED(date)_"@"_$$CLOCK(date)
 ;
ISDATE(text) ; True for a valid FileMan date, with or without a time
 NEW time
 IF text'?7N.1(1".".6N) QUIT 0
 IF $$PARSE($$SLASHED(text))="" QUIT 0
 SET time=$EXTRACT($PIECE(text,".",2)_"000000",1,6)
 IF time>240000 QUIT 0
 QUIT $EXTRACT(time,1,2)<25&($EXTRACT(time,3,4)<60)&($EXTRACT(time,5,6)<60)
 ;
INVERSE(date) ; A key that sorts the latest date first
 QUIT 9999999-date
 ;
PARSE(text) ; The FileMan date of mm/dd/yyyy [hh:mm]; empty if it is not a date or its year is not supported
 NEW date
 SET date=$$CALENDAR(text)
 QUIT $SELECT(date="":"",$$OUTSIDE(date):"",1:date)
 ;
OUTSIDE(date) ; True outside the supported years. From 2700 on, a FileMan date would have more digits.
 QUIT date<1000000!(date'<10000000)
 ;
FAULT(text,sentence) ; The error of a text that is not a date: about its year, or the given sentence; empty for a date
 NEW date
 SET date=$$CALENDAR(text)
 IF date="" QUIT sentence
 QUIT $SELECT($$OUTSIDE(date):text_" is outside the years 1800 to 2699.",1:"")
 ;
FMFAULT(text,sentence) ; The same for a FileMan date; empty for an empty text
 NEW fault
 IF text="" QUIT ""
 IF $$ISDATE(text) QUIT ""
 SET fault=$SELECT(text?1.8N.1(1".".6N):$$FAULT($$SLASHED(text),""),1:"")
 QUIT $SELECT(fault="":sentence,1:fault)
 ;
TYPED(text) ; The FileMan date of a date as users type it in a search:
 ; 1/2/2006, 1-2-2006, 01022006, 2006-01-02, JAN 2,2006, 2 JAN 2006
 NEW parts
 IF text?8N SET text=$EXTRACT(text,1,2)_"/"_$EXTRACT(text,3,4)_"/"_$EXTRACT(text,5,8)
 IF text?4N1"-"1.2N1"-"1.2N SET text=$PIECE(text,"-",2,3)_"-"_$PIECE(text,"-")
 SET text=$TRANSLATE(text,"-","/"),parts=$TRANSLATE(text,","," ")
 IF parts?1.2N1" "3.A.E SET parts=$PIECE(parts," ",2)_" "_$PIECE(parts," ")_" "_$PIECE(parts," ",3,9)
 IF parts?3.A1" "1.2N1" "4N SET text=$$MONTH($PIECE(parts," "))_"/"_$PIECE(parts," ",2,3),text=$TRANSLATE(text," ","/")
 QUIT $$PARSE(text)
 ;
MONTH(name) ; The number of a month by its first three letters; 0 if unknown
 QUIT $FIND("JAN FEB MAR APR MAY JUN JUL AUG SEP OCT NOV DEC",$EXTRACT(name,1,3))\4
 ;
CALENDAR(text) ; Like PARSE, for any year
 NEW date,day,month,time,year
 SET date=$PIECE(text," "),time=$PIECE(text," ",2)
 IF date'?1.2N1"/"1.2N1"/"4N QUIT ""
 SET month=+date,day=+$PIECE(date,"/",2),year=+$PIECE(date,"/",3)
 IF month<1!(month>12)!(day<1) QUIT ""
 IF day>$SELECT(month=2:28+$$LEAP(year),1:$PIECE("31,28,31,30,31,30,31,31,30,31,30,31",",",month)) QUIT ""
 SET date=year-1700*10000+(month*100)+day
 IF text'[" " QUIT date
 IF time'?2N1":"2N QUIT ""
 IF time>23!($PIECE(time,":",2)>59) QUIT ""
 QUIT +(date_"."_$TRANSLATE(time,":"))
